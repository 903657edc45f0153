#include "core/interchange/LinkProbe.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace {

using State = LinkStatus::State;

LinkStatus Status(State TheState, int Code = 0, const QString& Detail = QString())
{
    LinkStatus status;
    status.state = TheState;
    status.code = Code;
    status.detail = Detail;
    return status;
}

// Why no answer came, in the user's words.
LinkStatus NetworkFailure(const QNetworkReply& Reply)
{
    switch (Reply.error()) {
    case QNetworkReply::HostNotFoundError:
        return Status(State::Unreachable, 0, QStringLiteral("host not found"));
    case QNetworkReply::ConnectionRefusedError:
        return Status(State::Unreachable, 0, QStringLiteral("connection refused"));
    case QNetworkReply::RemoteHostClosedError:
        return Status(State::Unreachable, 0, QStringLiteral("connection closed without an answer"));
    case QNetworkReply::TimeoutError:
        return Status(State::TimedOut);
    case QNetworkReply::SslHandshakeFailedError:
        return Status(State::Unreachable, 0, QStringLiteral("secure connection failed"));
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
        return Status(State::Unreachable, 0, QStringLiteral("no network"));
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return Status(State::Unreachable, 0, QStringLiteral("proxy failed"));
    case QNetworkReply::TooManyRedirectsError:
        return Status(State::RedirectLoop);
    default:
        return Status(State::Unreachable, 0, Reply.errorString());
    }
}

// Codes a browser shows as a page; anything else is the server's fault.
LinkStatus Answer(int Code, bool Redirected, const QUrl& Final)
{
    if (Code >= 200 && Code < 300)
        return Redirected ? Status(State::Moved, Code, Final.toString()) : Status(State::Ok, Code);
    if (Code >= 400 && Code < 500)
        return Status(State::Broken, Code);
    return Status(State::ServerError, Code);
}

} // namespace

LinkProbe::LinkProbe(QNetworkAccessManager& Network, const QUrl& Url,
                     std::chrono::milliseconds Timeout, QObject* parent)
    : QObject(parent), m_network(Network), m_current(Url)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(Timeout);
    connect(&m_timer, &QTimer::timeout, this, &LinkProbe::TimedOut);
}

LinkProbe::~LinkProbe()
{
    DropReply();
}

void LinkProbe::Start()
{
    m_visited.insert(m_current.adjusted(QUrl::RemoveFragment));
    m_timer.start();
    Send(false);
}

void LinkProbe::Abort()
{
    m_done = true;
    m_timer.stop();
    DropReply();
}

void LinkProbe::Send(bool UseGet)
{
    DropReply();
    m_usingGet = UseGet;
    QNetworkRequest request(m_current);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                         QNetworkRequest::AlwaysNetwork);
    request.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("Mozilla/5.0 (compatible; Vantrel/%1 link check)")
                          .arg(QCoreApplication::applicationVersion()));
    m_reply = UseGet ? m_network.get(request) : m_network.head(request);
    // Only the headers matter: keep at most a little of any body in memory.
    m_reply->setReadBufferSize(16 * 1024);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &LinkProbe::HeadersArrived);
    connect(m_reply, &QNetworkReply::finished, this, &LinkProbe::ReplyFinished);
}

void LinkProbe::HeadersArrived()
{
    Judge();
}

void LinkProbe::ReplyFinished()
{
    if (m_done || !m_reply)
        return;
    if (!Judge())
        Report(NetworkFailure(*m_reply));
}

bool LinkProbe::Judge()
{
    if (m_done || !m_reply)
        return true;
    const QVariant codeValue = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    if (!codeValue.isValid())
        return false;
    const int code = codeValue.toInt();

    if (code >= 300 && code < 400 && code != 304) {
        const QUrl location = QUrl::fromEncoded(m_reply->rawHeader("Location").trimmed());
        if (location.isEmpty() || !location.isValid()) {
            Report(Status(State::ServerError, code));
            return true;
        }
        const QUrl next = m_current.resolved(location);
        const QUrl key = next.adjusted(QUrl::RemoveFragment);
        if (m_visited.contains(key) || m_visited.size() > MaxRedirects) {
            Report(Status(State::RedirectLoop));
            return true;
        }
        m_visited.insert(key);
        m_current = next;
        const QString scheme = next.scheme().toLower();
        if (scheme != QLatin1String("http") && scheme != QLatin1String("https")) {
            // Somewhere a request of ours cannot follow: say where it leads.
            Report(Status(State::Moved, code, next.toString()));
            return true;
        }
        Send(m_usingGet);
        return true;
    }
    // Servers that refuse HEAD answer it with all sorts of errors; GET has the last word.
    if (code >= 400 && !m_usingGet) {
        Send(true);
        return true;
    }
    Report(Answer(code, m_visited.size() > 1, m_current));
    return true;
}

void LinkProbe::TimedOut()
{
    if (!m_done)
        Report(Status(State::TimedOut));
}

void LinkProbe::Report(const LinkStatus& Status)
{
    m_done = true;
    m_timer.stop();
    DropReply();
    emit Finished(Status);
}

void LinkProbe::DropReply()
{
    if (!m_reply)
        return;
    QNetworkReply* reply = m_reply;
    m_reply = nullptr;
    disconnect(reply, nullptr, this, nullptr);
    // Deleting a reply stops its request. Not abort(): the network thread may still
    // report the answer it had, and a reply aborted as well complains about it.
    reply->deleteLater();
}
