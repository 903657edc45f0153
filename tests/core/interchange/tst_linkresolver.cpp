#include "core/interchange/LinkChecker.h"
#include "core/interchange/LinkResolver.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Kind = ResolvedLink::Kind;
Q_DECLARE_METATYPE(ResolvedLink::Kind)

class TestLinkResolver : public QObject
{
    Q_OBJECT
private slots:
    void resolvesAsABrowserDoes_data();
    void resolvesAsABrowserDoes();
    void relativeLinksWithoutBaseAreFilesNextToThePicture();
};

void TestLinkResolver::resolvesAsABrowserDoes_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("base");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("status");
    const auto row = [](const char* name, const char* link, const char* base, Kind kind,
                        const char* address, const char* status = "") {
        QTest::newRow(name) << QString::fromUtf8(link) << QString::fromUtf8(base) << kind
                            << QString::fromUtf8(address) << QString::fromUtf8(status);
    };
    // Absolute addresses stay as they are, whatever the base.
    row("https", "https://s.org/a?b=1#c", "http://b.net/", Kind::Web, "https://s.org/a?b=1#c");
    row("capitals", "HTTP://O.org/X", "b/", Kind::Web, "http://o.org/X");
    row("ftp", "ftp://f.org/f.zip", "http://b.net/", Kind::Other, "ftp://f.org/f.zip",
        "Not checked (ftp)");
    row("mailto", "mailto:ann@x.org", "http://b.net/", Kind::Other, "mailto:ann@x.org",
        "Not checked (mailto)");
    row("mailto with blanks", "mailto:a@x.org?subject=Hi there", "", Kind::Other,
        "mailto:a@x.org?subject=Hi there", "Not checked (mailto)");
    row("file url", "file:///srv/site/a.htm", "http://b.net/", Kind::File,
        "file:///srv/site/a.htm");
    row("file elsewhere", "file://nas/share/a.htm", "", Kind::Other, "file://nas/share/a.htm",
        "Not checked (file on nas)");
    row("drive path", "C:\\web\\a.htm", "http://b.net/", Kind::File, "file:///C:/web/a.htm");
    row("blanks around", "  http://o.org/x \t", "", Kind::Web, "http://o.org/x");

    // Relative addresses against the base.
    row("base with final slash", "p.htm", "http://s.com/dir/", Kind::Web, "http://s.com/dir/p.htm");
    row("base without final slash", "p.htm", "http://s.com/dir", Kind::Web, "http://s.com/p.htm");
    row("bare host base", "p.htm", "http://s.com", Kind::Web, "http://s.com/p.htm");
    row("parent folder", "../a.html", "http://s.com/x/y/", Kind::Web, "http://s.com/x/a.html");
    row("site root", "/a.html", "http://s.com/x/y/", Kind::Web, "http://s.com/a.html");
    row("same scheme", "//cdn.net/i.js", "https://s.com/", Kind::Web, "https://cdn.net/i.js");
    row("base without scheme", "p.htm", "www.s.com/x/", Kind::Web, "http://www.s.com/x/p.htm");
    row("local folder base", "a/b.htm", "/srv/site/", Kind::File, "file:///srv/site/a/b.htm");
    row("ftp base", "f.zip", "ftp://f.org/pub/", Kind::Other, "ftp://f.org/pub/f.zip",
        "Not checked (ftp)");
    row("fragment only", "#top", "http://s.com/p.htm", Kind::Web, "http://s.com/p.htm#top");

    // What cannot be used says why.
    row("empty", "", "http://s.com/", Kind::Empty, "", "No address");
    row("space", "my page.htm", "http://s.com/", Kind::Malformed, "",
        "Malformed: space in address");
    row("space in host", "http://exa mple.com/", "", Kind::Malformed, "",
        "Malformed: space in address");
    row("bad port", "http://s.com:99999/", "", Kind::Malformed, "", "Malformed: bad port");
    row("placeholder", "http://", "", Kind::Malformed, "", "Malformed: no host name");
    row("unknown scheme", "htp://s.com/", "http://b.net/", Kind::Malformed, "",
        "Malformed: unknown scheme \"htp\"");
    row("bad base", "p.htm", "http://bad base/", Kind::Malformed, "", "Malformed: bad base URL");
    row("bad base, absolute link", "http://o.org/", "http://bad base/", Kind::Web, "http://o.org/");
    row("relative, no base", "p.htm", "", Kind::Other, "", "Not checked (relative, no base URL)");
}

void TestLinkResolver::resolvesAsABrowserDoes()
{
    QFETCH(QString, link);
    QFETCH(QString, base);
    QFETCH(Kind, kind);
    QFETCH(QString, address);
    QFETCH(QString, status);
    const ResolvedLink resolved = LinkResolver(base, QString()).Resolve(link);
    QCOMPARE(resolved.kind, kind);
    QCOMPARE(resolved.Address(), address);
    QCOMPARE(resolved.status.Text(), status);
    QCOMPARE(resolved.NeedsCheck(), status.isEmpty());
    QCOMPARE(resolved.status.IsBroken(), kind == Kind::Malformed);
}

void TestLinkResolver::relativeLinksWithoutBaseAreFilesNextToThePicture()
{
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

QTEST_GUILESS_MAIN(TestLinkResolver)
#include "tst_linkresolver.moc"
