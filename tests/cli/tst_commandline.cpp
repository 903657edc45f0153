#include "CliRun.h"
#include "ManualText.h"
#include "core/forms/HelpFile.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

namespace {

// As from a terminal with no display: --help and --version must not need one.
Run Start(const QString& program, const QStringList& arguments, bool display = false)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QString::fromLatin1(name));
    if (display)
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    QProcess process;
    process.setProcessEnvironment(environment);
    return Finish(process, program, arguments);
}

QString Editor()
{
#ifdef VANTREL_EDITOR
    return QStringLiteral(VANTREL_EDITOR);
#else
    return QString();
#endif
}

QString Packaged(const char* name)
{
    QFile file(QStringLiteral(VANTREL_PACKAGING_DIR "/") + QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

// What a user sees of the two programs' versions and help, and of the installed manual
// pages and AppStream file.
class TestCommandLine : public QObject
{
    Q_OBJECT
private slots:
    void cliTellsTheProjectVersion()
    {
        Run cli = Start(QStringLiteral(VANTREL_CLI), {"--version"});
        QCOMPARE(cli.exitCode, 0);
        QCOMPARE(cli.out, QByteArray("vantrel-cli " VANTREL_PROJECT_VERSION "\n"));
        QCOMPARE(cli.err, QByteArray());
        // Only alone: with a command it is wrong usage, as any unknown option is.
        cli = Start(QStringLiteral(VANTREL_CLI), {"dump", "--version", "map.imp"});
        QCOMPARE(cli.exitCode, 2);
        QVERIFY(cli.err.startsWith("Usage: vantrel-cli"));
    }

    void editorVersionHelpAndOptions()
    {
        if (Editor().isEmpty())
            QSKIP("The editor is not built.");
        for (const char* option : {"--version", "-v"}) {
            const Run editor = Start(Editor(), {QString::fromLatin1(option)});
            QCOMPARE(editor.exitCode, 0);
            QCOMPARE(editor.out, QByteArray("Vantrel " VANTREL_PROJECT_VERSION "\n"));
            QCOMPARE(editor.err, QByteArray());
        }
        for (const char* option : {"--help", "-h"}) {
            const Run run = Start(Editor(), {QString::fromLatin1(option)});
            QCOMPARE(run.exitCode, 0);
            QVERIFY2(run.out.startsWith("Usage: "), run.out.constData());
            for (const char* shown :
                 {"[FILE...]", "Editor for HTML client-side image maps.", "-h, --help",
                  "-v, --version", "Image Map Files (.imp) to open, or pictures to start new maps"})
                QVERIFY2(run.out.contains(shown), shown);
            // The timing switch is for scripts/bench, not for users.
            QVERIFY(!run.out.contains("quit-after-first-paint"));
        }
        // Unknown options are refused by the windowed program as before, with Qt's message.
        const Run run = Start(Editor(), {"--frobnicate"}, true);
        QCOMPARE(run.exitCode, 1);
        QVERIFY2(run.err.contains("Unknown option 'frobnicate'."), run.err.constData());
        QVERIFY(run.out.isEmpty());
        // Qt's own options still go to Qt.
        const Run version = Start(Editor(), {"-platform", "offscreen", "--version"});
        QCOMPARE(version.exitCode, 0);
        QCOMPARE(version.out, QByteArray("Vantrel " VANTREL_PROJECT_VERSION "\n"));
    }

    // The manual pages and the user manual name every command, option and exit status.
    void manualsCoverEveryCommandAndOption()
    {
        const QString cliPage = Packaged("vantrel-cli.1");
        const QString editorPage = Packaged("vantrel.1");
        const QString manual = ManualText();
        QVERIFY(!cliPage.isEmpty() && !editorPage.isEmpty() && manual.contains("vantrel-cli"));
        const QString title = QStringLiteral("\"Vantrel " VANTREL_PROJECT_VERSION "\"");
        QVERIFY(cliPage.startsWith(QStringLiteral(".TH VANTREL\\-CLI 1 ")) &&
                cliPage.contains(title));
        QVERIFY(editorPage.startsWith(QStringLiteral(".TH VANTREL 1 ")) &&
                editorPage.contains(title));
        QVERIFY(!cliPage.contains(QLatin1Char('@')) && !editorPage.contains(QLatin1Char('@')));

        const QString usage = QString::fromUtf8(Start(QStringLiteral(VANTREL_CLI), {"--help"}).out);
        const QRegularExpression command(QStringLiteral("^  ([a-z]+) "),
                                         QRegularExpression::MultilineOption);
        int commands = 0;
        for (auto it = command.globalMatch(usage); it.hasNext(); ++commands) {
            const QString name = it.next().captured(1);
            QVERIFY2((cliPage.contains(QStringLiteral("\n\\fB%1\\fR").arg(name)) ||
                      cliPage.contains(QStringLiteral("\n.BI %1 ").arg(name))) &&
                         manual.contains(QStringLiteral("vantrel-cli %1 ").arg(name)),
                     qPrintable(name));
        }
        QCOMPARE(commands, 8);
        const QRegularExpression cliOption(QStringLiteral("--[a-z-]+"));
        for (auto it = cliOption.globalMatch(usage); it.hasNext();) {
            const QString name = it.next().captured(0);
            QVERIFY2(manual.contains(name), qPrintable(name));
        }
        for (const auto& [page, user] :
             {std::pair("\n.B 0\n", "0 when"), std::pair("\n.B 1\n", "1 when"),
              std::pair("\n.B 2\n", "2 for"), std::pair("\n.B 3\n", "3 when")})
            QVERIFY2(cliPage.contains(QLatin1String(page)) && manual.contains(QLatin1String(user)),
                     user);
        QVERIFY(cliPage.contains(QStringLiteral(".B \\-\\-version")));

        // Every option the editor's help lists.
        if (Editor().isEmpty())
            return;
        const Run help = Start(Editor(), {"--help"});
        const QRegularExpression option(QStringLiteral("--([a-z-]+)"));
        int options = 0;
        for (auto it = option.globalMatch(QString::fromUtf8(help.out)); it.hasNext(); ++options) {
            const QString name = it.next().captured(1);
            QVERIFY2(editorPage.contains(QStringLiteral("\\-\\-") +
                                         QString(name).replace(QLatin1Char('-'), "\\-")),
                     qPrintable(name));
        }
        QCOMPARE(options, 3);
    }

    void metainfoMatchesTheProgram()
    {
        // Element name -> texts, and the attributes of <component> and <release>.
        QMultiHash<QString, QString> texts;
        QHash<QString, QXmlStreamAttributes> attributes;
        QXmlStreamReader xml(Packaged(VANTREL_METAINFO));
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QString name = xml.name().toString();
            attributes.insert(name, xml.attributes());
            if (!QStringList{"component", "description", "provides", "releases", "categories",
                             "keywords", "ul"}
                     .contains(name))
                texts.insert(name, xml.readElementText(QXmlStreamReader::IncludeChildElements));
        }
        QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
        QCOMPARE(attributes.value(QStringLiteral("component")).value(QStringLiteral("type")),
                 QStringLiteral("desktop-application"));
        QCOMPARE(texts.value(QStringLiteral("id")) + QStringLiteral(".metainfo.xml"),
                 QStringLiteral(VANTREL_METAINFO));
        QCOMPARE(texts.value(QStringLiteral("url")), HelpFile::OnlineAddress);
        QCOMPARE(attributes.value(QStringLiteral("release")).value(QStringLiteral("version")),
                 QStringLiteral(VANTREL_PROJECT_VERSION));
        QVERIFY(QFile::exists(QStringLiteral(VANTREL_SOURCE_DIR "/packaging/") +
                              texts.value(QStringLiteral("launchable"))));
        QStringList binaries = texts.values(QStringLiteral("binary"));
        binaries.sort();
        QCOMPARE(binaries, QStringList({"vantrel", "vantrel-cli"}));
    }
};

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
