#include "LocalHttpServer.h"
#include "core/interchange/LinkChecker.h"
#include "core/interchange/LinkResolver.h"
#include "core/interchange/LinkTableModel.h"

#include <QFile>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

using namespace std::chrono_literals;
using Kind = ResolvedLink::Kind;

namespace {

// A port on this machine where nobody listens.
quint16 ClosedPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

// The text of one cell, by default the status.
QString Cell(const LinkTableModel& Model, int Row, int Column = LinkTableModel::StatusColumn)
{
    return Model.index(Row, Column).data().toString();
}

// Checks every row and waits for the end.
bool CheckedAll(LinkTableModel& Model)
{
    QSignalSpy finished(&Model, &LinkTableModel::Finished);
    Model.CheckAll();
    return !Model.IsChecking() || finished.wait(20000);
}

} // namespace

// Links: where each leads, and what a check of each ends in.
class TestLinkChecker : public QObject
{
    Q_OBJECT
private slots:
    void resolvesAsABrowserDoes()
    {
        const auto resolves = [](const char* link, const char* base, Kind kind, const char* address,
                                 const char* status = "") {
            const ResolvedLink resolved = LinkResolver(base, QString()).Resolve(link);
            // The link and base on both sides name the case in a failure.
            QCOMPARE((QStringList{link, base, resolved.Address(), resolved.status.Text()}),
                     (QStringList{link, base, address, status}));
            QCOMPARE(resolved.kind, kind);
            QCOMPARE(resolved.NeedsCheck(), *status == 0);
            QCOMPARE(resolved.status.IsBroken(), kind == Kind::Malformed);
        };
        // Absolute addresses stay as they are, whatever the base.
        resolves("https://s.org/a?b=1#c", "http://b.net/", Kind::Web, "https://s.org/a?b=1#c");
        resolves("HTTP://O.org/X", "b/", Kind::Web, "http://o.org/X");
        resolves("ftp://f.org/f.zip", "http://b.net/", Kind::Other, "ftp://f.org/f.zip",
                 "Not checked (ftp)");
        resolves("mailto:ann@x.org", "http://b.net/", Kind::Other, "mailto:ann@x.org",
                 "Not checked (mailto)");
        resolves("mailto:a@x.org?subject=Hi there", "", Kind::Other,
                 "mailto:a@x.org?subject=Hi there", "Not checked (mailto)");
        resolves("file:///srv/site/a.htm", "http://b.net/", Kind::File, "file:///srv/site/a.htm");
        resolves("file://nas/share/a.htm", "", Kind::Other, "file://nas/share/a.htm",
                 "Not checked (file on nas)");
        resolves("C:\\web\\a.htm", "http://b.net/", Kind::File, "file:///C:/web/a.htm");
        resolves("  http://o.org/x \t", "", Kind::Web, "http://o.org/x");

        // Relative addresses against the base.
        resolves("p.htm", "http://s.com/dir/", Kind::Web, "http://s.com/dir/p.htm");
        resolves("p.htm", "http://s.com/dir", Kind::Web, "http://s.com/p.htm");
        resolves("p.htm", "http://s.com", Kind::Web, "http://s.com/p.htm");
        resolves("../a.html", "http://s.com/x/y/", Kind::Web, "http://s.com/x/a.html");
        resolves("/a.html", "http://s.com/x/y/", Kind::Web, "http://s.com/a.html");
        resolves("//cdn.net/i.js", "https://s.com/", Kind::Web, "https://cdn.net/i.js");
        resolves("p.htm", "www.s.com/x/", Kind::Web, "http://www.s.com/x/p.htm");
        resolves("a/b.htm", "/srv/site/", Kind::File, "file:///srv/site/a/b.htm");
        resolves("f.zip", "ftp://f.org/pub/", Kind::Other, "ftp://f.org/pub/f.zip",
                 "Not checked (ftp)");
        resolves("#top", "http://s.com/p.htm", Kind::Web, "http://s.com/p.htm#top");

        // What cannot be used says why.
        resolves("", "http://s.com/", Kind::Empty, "", "No address");
        resolves("my page.htm", "http://s.com/", Kind::Malformed, "",
                 "Malformed: space in address");
        resolves("http://exa mple.com/", "", Kind::Malformed, "", "Malformed: space in address");
        resolves("http://s.com:99999/", "", Kind::Malformed, "", "Malformed: bad port");
        resolves("http://", "", Kind::Malformed, "", "Malformed: no host name");
        resolves("htp://s.com/", "http://b.net/", Kind::Malformed, "",
                 "Malformed: unknown scheme \"htp\"");
        resolves("p.htm", "http://bad base/", Kind::Malformed, "", "Malformed: bad base URL");
        resolves("http://o.org/", "http://bad base/", Kind::Web, "http://o.org/");
        resolves("p.htm", "", Kind::Other, "", "Not checked (relative, no base URL)");
        // Without a base, relative links are files next to the picture.
        QTemporaryDir root;
        QVERIFY(root.isValid());
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("site/img")));
        for (const char* name : {"site/index.htm", "site/img/b c.htm"}) {
            QFile file(root.filePath(QString::fromUtf8(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        const QString pictureFolder = root.filePath(QStringLiteral("site/img"));
        const auto resolve = [](const QString& base, const QString& folder, const char* link) {
            return LinkResolver(base, folder).Resolve(QString::fromUtf8(link));
        };
        const auto status = [&](const char* link) {
            const ResolvedLink resolved = resolve(QString(), pictureFolder, link);
            return resolved.kind == Kind::File ? LinkChecker::CheckFile(resolved.url).Text()
                                               : resolved.status.Text();
        };
        QCOMPARE(status("../index.htm"), QStringLiteral("OK (file)"));
        QCOMPARE(status("b%20c.htm"), QStringLiteral("OK (file)"));
        QCOMPARE(status("b%20c.htm#part"), QStringLiteral("OK (file)"));
        QCOMPARE(status("gone.htm"), QStringLiteral("File missing"));
        QCOMPARE(status("../img/gone.htm?x=1"), QStringLiteral("File missing"));
        QCOMPARE(resolve(QString(), pictureFolder, "../index.htm").url,
                 QUrl::fromLocalFile(root.filePath(QStringLiteral("site/index.htm"))));
        // A folder without its final separator is still the folder.
        QCOMPARE(resolve(QString(), pictureFolder + QLatin1Char('/'), "x.htm").url,
                 resolve(QString(), pictureFolder, "x.htm").url);
        // A typed base wins over the picture's folder.
        QCOMPARE(resolve(QStringLiteral("http://s.com/"), pictureFolder, "../index.htm").Address(),
                 QStringLiteral("http://s.com/index.htm"));
    }

    void everyAnswerEndsInAClearStatus()
    {
        const auto at = [this](const char* path) { return m_server.Url(path).toString(); };
        // Each link with the status its check ends in.
        const QList<std::pair<QString, QString>> rows{
            {at("/ok"), "OK 200"},
            {at("/moved"), "Moved → " + at("/ok")},
            {at("/missing"), "Broken 404"},
            {at("/error"), "Server error 500"},
            {at("/unavailable"), "Server error 503"},
            {at("/nohead"), "OK 200"},
            {at("/slow"), "Timed out"},
            {at("/loop"), "Redirect loop"},
            {at("/drop"), "Unreachable: connection closed without an answer"},
            {at("/huge"), "OK 200"},
            {at("/hugemissing"), "Broken 404"},
            {QStringLiteral("http://127.0.0.1:%1/").arg(ClosedPort()),
             "Unreachable: connection refused"},
            {"ok#second-look", "OK 200"},
            {"mailto:ann@x.org", "Not checked (mailto)"},
            {"http://s.com:99999/", "Malformed: bad port"},
            {QString(), "No address"}};
        QStringList links;
        for (const auto& row : rows)
            links << row.first;

        LinkTableModel model;
        model.SetTimeout(600ms);
        QSignalSpy finished(&model, &LinkTableModel::Finished);
        model.SetLinks(links);
        model.SetBase(m_server.Url("/").toString(), QString());
        QCOMPARE(Cell(model, 0, LinkTableModel::LinkColumn), QStringLiteral("Shape #1"));
        QCOMPARE(Cell(model, 15, LinkTableModel::LinkColumn), QStringLiteral("Default area"));
        // Addresses and listing without asking anybody: the URL checker's test.
        model.CheckAll();
        QVERIFY(model.IsChecking());
        QCOMPARE(Cell(model, 0), QStringLiteral("Checking…"));
        QVERIFY(model.Summary().startsWith(QStringLiteral("Checking… 16 links: ")));
        QVERIFY(finished.wait(20000));
        QCOMPARE(finished.size(), 1);
        for (int row = 0; row < links.size(); ++row)
            QCOMPARE(Cell(model, row), rows[row].second);
        // The count of broken rows is the summary's (and the command line's exit status).
        QCOMPARE(model.Summary(),
                 QStringLiteral("16 links: 9 broken, 4 OK, 1 moved, 2 not checked."));
        QVERIFY(model.index(2, 0).data(Qt::BackgroundRole).isValid());
        QVERIFY(!model.index(0, 0).data(Qt::BackgroundRole).isValid());

        // HEAD first, GET only where HEAD was refused; one request for the two rows that
        // differ only in their fragment.
        QCOMPARE(m_server.Requests("HEAD /nohead"), 1);
        QCOMPARE(m_server.Requests("GET /nohead"), 1);
        QCOMPARE(m_server.Requests("GET /ok"), 0);
        QCOMPARE(m_server.Requests("HEAD /ok"), 2); // the row, and the end of /moved
        // The loop was seen, not run round until some limit.
        QCOMPARE(m_server.Requests("HEAD /loop"), 1);
        QCOMPARE(m_server.Requests("HEAD /loop2"), 1);
        // No body is read: the endless ones stop right after their headers.
        QTest::qWait(100);
        QVERIFY2(m_server.HugeBytesSent() < 8 * 1024 * 1024,
                 QByteArray::number(m_server.HugeBytesSent()));
    }

    // An edited row checked again through the URL checker: its own test.
    void newBaseForgetsWhatWasLearnt()
    {
        LinkTableModel model;
        model.SetLinks({QStringLiteral("ok"), QString()});
        model.SetBase(m_server.Url("/").toString(), QString());
        QVERIFY(CheckedAll(model));
        QCOMPARE(Cell(model, 0), QStringLiteral("OK 200"));
        QCOMPARE(Cell(model, 0, LinkTableModel::UrlColumn), QStringLiteral("ok"));
        model.SetBase(QStringLiteral("http://127.0.0.1:1/"), QString());
        QCOMPARE(Cell(model, 0), QString());
        QCOMPARE(Cell(model, 0, LinkTableModel::AddressColumn),
                 QStringLiteral("http://127.0.0.1:1/ok"));
    }

    void cancelStopsTheChecksInFlight()
    {
        const int asked = m_server.Requests("HEAD /slow");
        auto model = std::make_unique<LinkTableModel>();
        QSignalSpy finished(model.get(), &LinkTableModel::Finished);
        model->SetLinks({m_server.Url("/slow").toString(), m_server.Url("/ok?cancel").toString()});
        model->CheckAll();
        QTRY_COMPARE(m_server.Requests("HEAD /slow"), asked + 1);
        // Not checking and no status after a cancel: the URL checker's test, on closing.
        model->Cancel();
        QTest::qWait(100);
        QCOMPARE(finished.size(), 0);
        // Checking again after a cancel works, and so does dropping the model mid-check.
        model->CheckAll();
        QTRY_COMPARE(m_server.Requests("HEAD /slow"), asked + 2);
        model.reset();
        QTest::qWait(50);
    }

    void manyLinksAreCheckedAFewAtATime()
    {
        QStringList links;
        for (int i = 0; i < 300; ++i)
            links << m_server.Url(QStringLiteral("/ok?n=%1").arg(i)).toString();
        links << QString();
        LinkTableModel model;
        model.SetLinks(links);
        QVERIFY(CheckedAll(model));
        QCOMPARE(model.Summary(), QStringLiteral("301 links: 0 broken, 300 OK, 1 not checked."));
        QVERIFY(m_server.MaxOpenConnections() <= 6);
        QCOMPARE(m_server.Requests("HEAD /ok?n=299"), 1);
    }

private:
    LocalHttpServer m_server;
};

QTEST_GUILESS_MAIN(TestLinkChecker)
#include "tst_linkchecker.moc"
