#pragma once

#include "core/interchange/LinkStatus.h"

#include <QObject>
#include <QSet>
#include <QTimer>
#include <QUrl>
#include <chrono>

class QNetworkAccessManager;
class QNetworkReply;

// Asks one web address whether it is there: HEAD first, GET when the server refuses
// HEAD, redirects followed by hand (so loops are seen and every hop is timed), the
// answer taken from the headers alone and the connection dropped before any body.
// Reports exactly once, unless aborted.
class LinkProbe : public QObject
{
    Q_OBJECT
public:
    LinkProbe(QNetworkAccessManager& Network, const QUrl& Url, std::chrono::milliseconds Timeout,
              QObject* parent = nullptr);
    ~LinkProbe() override;

    void Start();
    // Stops without reporting.
    void Abort();

    // More hops than this count as a loop.
    static constexpr int MaxRedirects = 10;

signals:
    void Finished(const LinkStatus& Status);

private:
    void Send(bool UseGet);
    void HeadersArrived();
    void ReplyFinished();
    void TimedOut();
    // Judges the answer in m_reply; false when it is not known yet.
    bool Judge();
    void Report(const LinkStatus& Status);
    void DropReply();

    QNetworkAccessManager& m_network;
    QUrl m_current;
    QSet<QUrl> m_visited;
    QNetworkReply* m_reply = nullptr;
    QTimer m_timer;
    bool m_usingGet = false;
    bool m_done = false;
};
