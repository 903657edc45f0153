#include "core/interchange/LinkChecker.h"
#include "core/interchange/LinkResolver.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using Kind = ResolvedLink::Kind;

class TestLinkResolver : public QObject
{
    Q_OBJECT
private slots:
    void resolvesAsABrowserDoes();
    void relativeLinksWithoutBaseAreFilesNextToThePicture();
};

void TestLinkResolver::resolvesAsABrowserDoes()
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
    resolves("mailto:a@x.org?subject=Hi there", "", Kind::Other, "mailto:a@x.org?subject=Hi there",
             "Not checked (mailto)");
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
    resolves("my page.htm", "http://s.com/", Kind::Malformed, "", "Malformed: space in address");
    resolves("http://exa mple.com/", "", Kind::Malformed, "", "Malformed: space in address");
    resolves("http://s.com:99999/", "", Kind::Malformed, "", "Malformed: bad port");
    resolves("http://", "", Kind::Malformed, "", "Malformed: no host name");
    resolves("htp://s.com/", "http://b.net/", Kind::Malformed, "",
             "Malformed: unknown scheme \"htp\"");
    resolves("p.htm", "http://bad base/", Kind::Malformed, "", "Malformed: bad base URL");
    resolves("http://o.org/", "http://bad base/", Kind::Web, "http://o.org/");
    resolves("p.htm", "", Kind::Other, "", "Not checked (relative, no base URL)");
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
