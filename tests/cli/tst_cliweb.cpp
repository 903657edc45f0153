#include "CliRun.h"
#include "ShapeRow.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

// vantrel-cli's web formats, map check and lossless import.
class TestCliWeb : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QVERIFY(QFile::copy(VANTREL_SOURCE_DIR "/examples/harbour.png", Path("harbour.png")));
        MapDocument map =
            MapFile::OpenMapFile(QStringLiteral(VANTREL_SOURCE_DIR "/examples/sample.imp"))
                .document;
        QVERIFY(map.ItemCount() >= 0);
        map.ImagePath = m_dir.path() + QLatin1Char('/');
        map.MapStyle = 2;
        QVERIFY(MapFile::SaveMap(map, Path("map.imp")).ok);
        MapDocument empty = map;
        empty.ResizeShapeArray(-1, true);
        QVERIFY(MapFile::SaveMap(empty, Path("empty.imp")).ok);
    }

    void htmlAndTestPageInEachFormat()
    {
        using Form = MapCodeGenerator::Form;
        for (MapFormat format : {MapFormat::Classic, MapFormat::Html5, MapFormat::Svg}) {
            const QString name = MapFormats::Name(format);
            Run run = Cli({"html", "--format", name, "map.imp"});
            QCOMPARE(run.exitCode, 0);
            QCOMPARE(run.out, Expected(format, Form::Viewing).Text.toUtf8());
            run = Cli({"html", "map.imp", "--test", "--format", name});
            QCOMPARE(run.out, Expected(format, Form::Test).Text.toUtf8());

            QCOMPARE(Cli({"testpage", "--format", name, "map.imp", "-o", name + ".htm"}).exitCode,
                     0);
            QCOMPARE(Read(name + ".htm"),
                     Expected(format, Form::Test).TestPageText(format).toUtf8());

            run = Cli({"html", "--format", name, "empty.imp"});
            QCOMPARE(run.exitCode, 1);
            QCOMPARE(run.err, QByteArray("No shape areas have been created.\n"));
        }
        // Classic stays the default.
        QCOMPARE(Cli({"html", "map.imp"}).out, Cli({"html", "--format", "classic", "map.imp"}).out);
        QVERIFY(Read("html5.htm").startsWith("<!DOCTYPE html>"));
    }

    void lintPrintsFindings()
    {
        Run run = Cli({"lint", "map.imp"});
        QCOMPARE(run.exitCode, 0);
        QVERIFY(run.out.isEmpty() && run.err.isEmpty());

        MapDocument map = MapFile::OpenMapFile(Path("map.imp")).document;
        map.SetComment(0, QString());
        map.SetURL(2, QStringLiteral("#"));
        QVERIFY(MapFile::SaveMap(map, Path("faulty.imp")).ok);
        run = Cli({"lint", "faulty.imp"});
        QCOMPARE(run.exitCode, 3);
        QCOMPARE(run.out, QByteArray("Shape #1: warning: no alt text: screen readers and search "
                                     "engines get nothing\n"
                                     "Shape #3: warning: placeholder URL \"#\": the area leads "
                                     "nowhere\n"));
        run = Cli({"lint", "--json", "faulty.imp"});
        QCOMPARE(run.exitCode, 3);
        const QJsonArray findings = QJsonDocument::fromJson(run.out).array();
        QCOMPARE(findings.size(), 2);
        QCOMPARE(findings[1].toObject().value("shape").toInt(), 3);
        QCOMPARE(findings[1].toObject().value("severity").toString(), QStringLiteral("warning"));
        QCOMPARE(findings[1].toObject().value("place").toString(), QStringLiteral("Shape #3"));

        run = Cli({"lint", "harbour.png"});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err, QByteArray("Error, map cannot be loaded.\n"));
    }

    void importWithOptions()
    {
        QVERIFY(WriteBytes(Path("code.html"),
                           "<map name=First><area shape=rect coords=1,1,5,5 href=One.htm></map>\n"
                           "<map name=Second><area shape=circle coords=20,20,4 href=Two.htm "
                           "title='Caf&eacute;'><area shape=default href=Rest.htm></map>"));
        const MapDocument before = MapFile::OpenMapFile(Path("map.imp")).document;

        Run run = Cli({"import", "code.html", "--into", "map.imp", "-o", "kept.imp", "--keep-text",
                       "--map", "Second"});
        QCOMPARE(run.exitCode, 0);
        MapDocument kept = MapFile::OpenMapFile(Path("kept.imp")).document;
        QCOMPARE(kept.ItemCount(), std::int16_t(0));
        QCOMPARE(kept.Shape(0).URL, QStringLiteral("Two.htm"));
        QCOMPARE(kept.Shape(0).StatusString, QString::fromUtf8("Caf\xc3\xa9"));
        QCOMPARE(kept.DefURL, QStringLiteral("Rest.htm"));
        QCOMPARE(kept.MapName, QStringLiteral("Second"));

        run = Cli({"import", "code.html", "--into", "map.imp", "-o", "added.imp", "--keep-text",
                   "--add"});
        QCOMPARE(run.exitCode, 0);
        MapDocument added = MapFile::OpenMapFile(Path("added.imp")).document;
        QCOMPARE(added.ItemCount(), std::int16_t(before.ItemCount() + 1));
        QCOMPARE(added.Shape(added.ItemCount()).URL, QStringLiteral("One.htm"));
        QCOMPARE(added.MapName, before.MapName);

        run = Cli({"import", "code.html", "--into", "map.imp", "-o", "none.imp", "--keep-text",
                   "--map", "Third"});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.err, QByteArray("The code holds no map named \"Third\".\n"));
        run = Cli({"import", "code.html", "--into", "map.imp", "-o", "none.imp", "--map", "First"});
        QCOMPARE(run.exitCode, 2);
        QVERIFY(!QFile::exists(Path("none.imp")));
    }

private:
    Run Cli(const QStringList& arguments) const { return RunCli(m_dir.path(), arguments); }
    QString Path(const QString& name) const { return m_dir.filePath(name); }
    QByteArray Read(const QString& name) const { return ReadBytes(Path(name)); }
    FormattedMapCode Expected(MapFormat format, MapCodeGenerator::Form form) const
    {
        MapDocument map = MapFile::OpenMapFile(Path("map.imp")).document;
        return FormattedMapCode::Generate(map, format, form);
    }

    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(TestCliWeb)
#include "tst_cliweb.moc"
