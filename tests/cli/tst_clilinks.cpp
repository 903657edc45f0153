#include "CliRun.h"
#include "LocalHttpServer.h"
#include "ShapeRow.h"
#include "core/interchange/MapFile.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

// vantrel-cli links against a server on this machine; the server runs on its own thread,
// so waiting for the process blocks nothing it needs.
class TestCliLinks : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY(m_server.IsListening());
        QImage picture(120, 80, QImage::Format_RGB32);
        picture.fill(Qt::green);
        QVERIFY(picture.save(Path("pic.png")));
        QVERIFY(WriteBytes(Path("about.htm"), {}));
    }

    void printsOneLinePerLink()
    {
        const QString server = m_server.Url("").toString();
        // Every status comes from the link table (checked on its own); here, how each kind
        // is printed.
        SaveMap("all.imp",
                {server + "/ok", server + "/moved", server + "/missing", server + "/slow",
                 "about.htm", "gone.htm", "mailto:ann@x.org"},
                QString());
        const Run run = Cli({"links", "--timeout", "0.5", "all.imp"});
        QCOMPARE(run.exitCode, 3);
        QCOMPARE(run.err, QByteArray());
        const QString folder = QUrl::fromLocalFile(m_dir.path()).toString();
        const QStringList expected{
            "Shape #1\tOK 200\t" + server + "/ok",
            "Shape #2\tMoved → " + server + "/ok\t" + server + "/moved",
            "Shape #3\tBroken 404\t" + server + "/missing",
            "Shape #4\tTimed out\t" + server + "/slow",
            // Without a base, relative links are files beside the picture.
            "Shape #5\tOK (file)\t" + folder + "/about.htm",
            "Shape #6\tFile missing\t" + folder + "/gone.htm",
            "Shape #7\tNot checked (mailto)\tmailto:ann@x.org",
            "Default area\tNo address\t",
        };
        QCOMPARE(QString::fromUtf8(run.out).split(QLatin1Char('\n'), Qt::SkipEmptyParts), expected);
    }

    void jsonAndExitStatus()
    {
        SaveMap("relative.imp", {"ok", "nohead#part"}, QStringLiteral("moved"));
        const QString base = m_server.Url("/").toString();
        const Run plain = Cli({"links", "--base", base, "relative.imp"});
        QCOMPARE(plain.exitCode, 0);
        QCOMPARE(plain.out,
                 ("Shape #1\tOK 200\t" + base + "ok\nShape #2\tOK 200\t" + base +
                  "nohead#part\nDefault area\tMoved → " + base + "ok\t" + base + "moved\n")
                     .toUtf8());

        const Run run = Cli({"links", "--json", "--base", base, "relative.imp"});
        QCOMPARE(run.exitCode, 0);
        QJsonParseError error;
        const QJsonObject json = QJsonDocument::fromJson(run.out, &error).object();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QCOMPARE(json.value("broken").toInt(), 0);
        QCOMPARE(json.value("summary").toString(),
                 QStringLiteral("3 links: 0 broken, 2 OK, 1 moved."));
        const QJsonArray links = json.value("links").toArray();
        QCOMPARE(links.size(), 3);
        QCOMPARE(links[2].toObject(), (QJsonObject{{"link", "Default area"},
                                                   {"url", "moved"},
                                                   {"address", base + "moved"},
                                                   {"status", "Moved → " + base + "ok"},
                                                   {"state", "moved"},
                                                   {"code", 200},
                                                   {"final", base + "ok"},
                                                   {"broken", false}}));

        // A broken link turns the exit status to 3, in JSON too.
        SaveMap("broken.imp", {m_server.Url("/missing").toString()}, QString());
        const Run broken = Cli({"links", "--json", "broken.imp"});
        QCOMPARE(broken.exitCode, 3);
        const QJsonObject first =
            QJsonDocument::fromJson(broken.out).object().value("links").toArray()[0].toObject();
        QCOMPARE(first.value("status").toString(), QStringLiteral("Broken 404"));
        QCOMPARE(first.value("code").toInt(), 404);
        QCOMPARE(first.value("broken").toBool(), true);
    }

    void unreadableMapsAndHelp()
    {
        QVERIFY(WriteBytes(Path("bad.imp"), "not a map\r\n"));
        for (const char* name : {"bad.imp", "absent.imp"}) {
            const Run run = Cli({"links", QString::fromLatin1(name)});
            QCOMPARE(run.exitCode, 1);
            QCOMPARE(run.out, QByteArray());
            QVERIFY(!run.err.isEmpty());
        }
        QVERIFY(Cli({"--help"}).out.contains("links [--base URL] [--json]"));
    }

private:
    Run Cli(const QStringList& arguments) const { return RunCli(m_dir.path(), arguments); }
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    // Saves a map over pic.png whose shapes link to Urls, the default area to DefURL.
    void SaveMap(const QString& name, const QStringList& urls, const QString& defURL) const
    {
        MapDocument map;
        map.ImagePath = m_dir.path() + QLatin1Char('/');
        map.ImageName = QStringLiteral("pic.png");
        map.RealWidth = map.SWidth = 120;
        map.RealHeight = map.SHeight = 80;
        for (const QString& url : urls)
            AddShapeRow(map, "1|0,0,10,0,10,10,0,10|" + url + "||||0|");
        map.DefURL = defURL;
        QVERIFY(MapFile::SaveMap(map, Path(name)).ok);
    }

    QTemporaryDir m_dir;
    LocalHttpServer m_server;
};

QTEST_GUILESS_MAIN(TestCliLinks)
#include "tst_clilinks.moc"
