#pragma once

#include <QHash>
#include <QHostAddress>
#include <QMutex>
#include <QMutexLocker>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QUrl>
#include <memory>
#include <numeric>

// A small HTTP server on 127.0.0.1, on a thread of its own so that a test may block
// (waiting for a process, say) while it answers. Each path behaves in one way:
//   /ok 200   /moved 301 -> /ok   /missing 404   /error 500   /unavailable 503
//   /nohead   405 to HEAD, 200 to GET
//   /huge     405 to HEAD, then 200 with an endless body to GET; /hugemissing the same
//             with 404
//   /slow     never answers          /loop 301 -> /loop2 302 -> /loop
//   /drop     closes the connection without a word
// Every request is counted as "METHOD /path".
class LocalHttpServer
{
public:
    LocalHttpServer()
    {
        m_thread.start();
        m_server = new QTcpServer;
        m_server->moveToThread(&m_thread);
        QMetaObject::invokeMethod(
            m_server,
            [this] {
                QObject::connect(m_server, &QTcpServer::newConnection, m_server,
                                 [this] { Accept(); });
                m_server->listen(QHostAddress::LocalHost);
                m_port = m_server->serverPort();
            },
            Qt::BlockingQueuedConnection);
    }
    ~LocalHttpServer()
    {
        QMetaObject::invokeMethod(
            m_server, [this] { delete m_server; }, Qt::BlockingQueuedConnection);
        m_thread.quit();
        m_thread.wait();
    }
    LocalHttpServer(const LocalHttpServer&) = delete;
    LocalHttpServer& operator=(const LocalHttpServer&) = delete;

    bool IsListening() const { return m_port != 0; }
    QUrl Url(const QString& Path) const
    {
        return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(Path));
    }
    int Requests(const QString& MethodAndPath) const
    {
        return Locked(m_requests).value(MethodAndPath);
    }
    int TotalRequests() const
    {
        const QHash<QString, int> requests = Locked(m_requests);
        return std::accumulate(requests.begin(), requests.end(), 0);
    }
    // Bytes of body sent by /huge, all requests together.
    qint64 HugeBytesSent() const { return Locked(m_hugeBytes); }
    // The most connections that were open at once.
    int MaxOpenConnections() const { return Locked(m_maxOpen); }

private:
    // Runs on the server's thread.
    void Accept()
    {
        while (QTcpSocket* socket = m_server->nextPendingConnection()) {
            auto request = std::make_shared<QByteArray>();
            {
                QMutexLocker lock(&m_mutex);
                m_maxOpen = qMax(m_maxOpen, ++m_open);
            }
            QObject::connect(socket, &QObject::destroyed, m_server, [this] {
                QMutexLocker lock(&m_mutex);
                --m_open;
            });
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, request] {
                request->append(socket->readAll());
                const qsizetype end = request->indexOf("\r\n\r\n");
                if (end < 0)
                    return;
                const QList<QByteArray> words = request->left(request->indexOf("\r\n")).split(' ');
                request->remove(0, end + 4);
                if (words.size() >= 2)
                    Answer(*socket, QString::fromLatin1(words[0]), QString::fromLatin1(words[1]));
            });
        }
    }

    void Answer(QTcpSocket& Socket, const QString& Method, const QString& Path)
    {
        {
            QMutexLocker lock(&m_mutex);
            ++m_requests[Method + QLatin1Char(' ') + Path];
        }
        const bool head = Method == QLatin1String("HEAD");
        if (Path == QLatin1String("/slow"))
            return;
        if (Path == QLatin1String("/drop")) {
            Socket.abort();
            Socket.deleteLater();
            return;
        }
        if ((Path == QLatin1String("/huge") || Path == QLatin1String("/hugemissing")) && !head) {
            SendHuge(Socket, Path == QLatin1String("/huge") ? "200 OK" : "404 Not Found");
            return;
        }
        // Status and where it leads, by path; an unknown path is missing.
        static const QHash<QString, std::pair<const char*, const char*>> answers{
            {"/ok", {"200 OK", nullptr}},
            {"/moved", {"301 Moved Permanently", "/ok"}},
            {"/error", {"500 Internal Server Error", nullptr}},
            {"/unavailable", {"503 Service Unavailable", nullptr}},
            {"/loop", {"301 Moved Permanently", "/loop2"}},
            {"/loop2", {"302 Found", "/loop"}}};
        const auto [status, location] =
            answers.value(Path.section(QLatin1Char('?'), 0, 0), {"404 Not Found", nullptr});
        if (Path == QLatin1String("/nohead") || Path.startsWith(QLatin1String("/huge")))
            Reply(Socket, head, head ? "405 Method Not Allowed" : "200 OK");
        else
            Reply(Socket, head, status, location);
    }

    static void Reply(QTcpSocket& Socket, bool Head, const char* Status,
                      const char* Location = nullptr)
    {
        const QByteArray body = QByteArray("<html><body>") + Status + "</body></html>";
        QByteArray text = QByteArray("HTTP/1.1 ") + Status + "\r\n";
        if (Location)
            text += QByteArray("Location: ") + Location + "\r\n";
        text += "Content-Type: text/html\r\nConnection: close\r\nContent-Length: " +
                QByteArray::number(body.size()) + "\r\n\r\n";
        if (!Head)
            text += body;
        Socket.write(text);
        Socket.disconnectFromHost();
    }

    // Headers announcing a gigabyte, then the body in pieces for as long as the client
    // keeps reading.
    void SendHuge(QTcpSocket& Socket, const char* Status)
    {
        Socket.write(QByteArray("HTTP/1.1 ") + Status +
                     "\r\nContent-Type: application/octet-stream\r\n"
                     "Connection: close\r\nContent-Length: 1073741824\r\n\r\n");
        const QByteArray piece(64 * 1024, 'x');
        QObject::connect(&Socket, &QTcpSocket::bytesWritten, &Socket, [this, &Socket, piece] {
            if (Socket.bytesToWrite() > 0 || Socket.state() != QAbstractSocket::ConnectedState)
                return;
            Socket.write(piece);
            QMutexLocker lock(&m_mutex);
            m_hugeBytes += piece.size();
        });
        Socket.write(piece);
    }

    // A copy of a member the server's thread writes.
    template <typename T> T Locked(const T& Member) const
    {
        QMutexLocker lock(&m_mutex);
        return Member;
    }

    QThread m_thread;
    QTcpServer* m_server = nullptr;
    quint16 m_port = 0;
    mutable QMutex m_mutex;
    QHash<QString, int> m_requests;
    qint64 m_hugeBytes = 0;
    int m_open = 0;
    int m_maxOpen = 0;
};
