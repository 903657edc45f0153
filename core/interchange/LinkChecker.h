#pragma once

#include "core/interchange/LinkStatus.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QUrl>
#include <chrono>
#include <deque>
#include <utility>

class LinkProbe;
class QNetworkAccessManager;

// Checks web addresses and local files in the background, a few at a time, so that
// tens of thousands of links neither flood a server nor freeze the window. Each address
// is asked once however often it is queued; results come back through Checked.
class LinkChecker : public QObject
{
    Q_OBJECT
public:
    explicit LinkChecker(QObject* parent = nullptr);
    ~LinkChecker() override;

    // Time one address may take, redirects included.
    void SetTimeout(std::chrono::milliseconds Timeout) { m_timeout = Timeout; }

    // Queues an http(s) or file address; Key is Key(Url), which the caller may keep.
    void Check(const QString& Key, const QUrl& Url);
    // Forgets the queue and stops the requests in flight; nothing more is reported.
    void Cancel();
    bool IsBusy() const { return !m_waiting.empty() || !m_running.isEmpty(); }

    // The key under which an address is asked and reported: the address without its
    // fragment, encoded (text hashes and compares far quicker than a QUrl).
    static QString Key(const QUrl& Url);
    // A local file's status, without the network.
    static LinkStatus CheckFile(const QUrl& Url);

signals:
    void Checked(const QString& Key, const LinkStatus& Status);
    // Everything queued has been reported.
    void Idle();

private:
    void ScheduleNext();
    void StartNext();
    void ProbeFinished(LinkProbe* Probe, const QString& Key, const LinkStatus& Status);
    void AnnounceIdle();

    QNetworkAccessManager* m_network;
    std::chrono::milliseconds m_timeout{10000};
    // A few at a time, as a browser asks one server.
    static constexpr int MaxConcurrent = 6;
    std::deque<std::pair<QString, QUrl>> m_waiting;
    QSet<QString> m_queued;
    QHash<QString, LinkProbe*> m_running;
    bool m_scheduled = false;
    bool m_owesIdle = false; // something was queued since the last Idle or Cancel
};
