#include "core/interchange/LinkChecker.h"

#include "core/interchange/LinkProbe.h"

#include <QFileInfo>
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QTimer>

namespace {

// Local files are quick to look at, but tens of thousands of them still take a moment:
// this many per turn of the event loop keeps the window responsive.
constexpr int FilesPerTurn = 500;

// The desktop's proxy settings (http_proxy, no_proxy...), as a browser would use them,
// except for this machine itself.
class DesktopProxies : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& Query) override
    {
        const QString host = Query.peerHostName();
        if (host == QLatin1String("localhost") || QHostAddress(host).isLoopback())
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        return systemProxyForQuery(Query);
    }
};

} // namespace

LinkChecker::LinkChecker(QObject* parent)
    : QObject(parent), m_network(new QNetworkAccessManager(this))
{
    m_network->setProxyFactory(new DesktopProxies);
}

LinkChecker::~LinkChecker()
{
    Cancel();
}

LinkStatus LinkChecker::CheckFile(const QUrl& Url)
{
    LinkStatus status;
    status.state = QFileInfo::exists(Url.toLocalFile()) ? LinkStatus::State::Ok
                                                        : LinkStatus::State::FileMissing;
    return status;
}

QString LinkChecker::Key(const QUrl& Url)
{
    return Url.adjusted(QUrl::RemoveFragment).toString(QUrl::FullyEncoded);
}

void LinkChecker::Check(const QString& Key, const QUrl& Url)
{
    if (m_running.contains(Key) || m_queued.contains(Key))
        return;
    m_queued.insert(Key);
    m_waiting.emplace_back(Key, Url);
    m_owesIdle = true;
    ScheduleNext();
}

void LinkChecker::Cancel()
{
    m_waiting.clear();
    m_queued.clear();
    m_owesIdle = false;
    const QList<LinkProbe*> probes = m_running.values();
    m_running.clear();
    for (LinkProbe* probe : probes) {
        probe->Abort();
        probe->deleteLater();
    }
}

void LinkChecker::ScheduleNext()
{
    // Results are reported from the event loop, never from inside Check().
    if (m_scheduled)
        return;
    m_scheduled = true;
    QTimer::singleShot(0, this, &LinkChecker::StartNext);
}

void LinkChecker::StartNext()
{
    m_scheduled = false;
    int files = 0;
    while (!m_waiting.empty() && m_running.size() < MaxConcurrent) {
        const QString key = m_waiting.front().first;
        const QUrl url = m_waiting.front().second;
        if (url.isLocalFile()) {
            if (files == FilesPerTurn) {
                ScheduleNext();
                return;
            }
            ++files;
            m_waiting.pop_front();
            m_queued.remove(key);
            emit Checked(key, CheckFile(url));
            continue;
        }
        m_waiting.pop_front();
        m_queued.remove(key);
        auto* probe = new LinkProbe(*m_network, url, m_timeout, this);
        m_running.insert(key, probe);
        connect(probe, &LinkProbe::Finished, this, [this, probe, key](const LinkStatus& Status) {
            ProbeFinished(probe, key, Status);
        });
        probe->Start();
    }
    AnnounceIdle();
}

void LinkChecker::AnnounceIdle()
{
    if (IsBusy() || !m_owesIdle)
        return;
    m_owesIdle = false;
    emit Idle();
}

void LinkChecker::ProbeFinished(LinkProbe* Probe, const QString& Key, const LinkStatus& Status)
{
    m_running.remove(Key);
    Probe->deleteLater();
    emit Checked(Key, Status);
    if (!m_waiting.empty())
        ScheduleNext();
    else
        AnnounceIdle();
}
