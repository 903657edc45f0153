#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLibraryInfo>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

// The tree's dependency rules, read from the #include lines of the sources:
// - nothing under core/ (nor cli/) includes a widget or web-engine header or anything under ui/;
// - the map window (ui/canvas/) does not reach up into the frame, the dialogs or the tools;
// - no two folders include each other, directly or round a longer loop.
namespace {

struct Include
{
    QString file; // relative to the root
    int line = 0;
    QString target; // as written between the quotes or brackets
    bool quoted = false;
};

QString folderOf(const QString& relativePath)
{
    return relativePath.section(QLatin1Char('/'), 0, -2);
}

QList<Include> includesUnder(const QString& root, const QStringList& topFolders)
{
    static const QRegularExpression includeLine(
        QStringLiteral(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])"));
    QList<Include> found;
    for (const QString& top : topFolders) {
        QDirIterator it(root + QLatin1Char('/') + top,
                        {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
                continue;
            const QString relative = QDir(root).relativeFilePath(path);
            for (int lineNumber = 1; !file.atEnd(); ++lineNumber) {
                const auto match = includeLine.match(QString::fromUtf8(file.readLine()));
                if (match.hasMatch())
                    found.append({relative, lineNumber, match.captured(2),
                                  match.captured(1) == QLatin1String("\"")});
            }
        }
    }
    return found;
}

// Header names of the Qt modules that need a screen of widgets or a browser engine.
QSet<QString> widgetHeaders()
{
    QSet<QString> names;
    const QDir headers(QLibraryInfo::path(QLibraryInfo::HeadersPath));
    for (const QString& module : headers.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        static const QRegularExpression widgetModule(
            QStringLiteral("^QtWidgets|^QtWebEngine|Widgets$|^QtPrintSupport$"));
        if (!widgetModule.match(module).hasMatch())
            continue;
        names.insert(module);
        for (const QString& header : QDir(headers.filePath(module)).entryList(QDir::Files))
            names.insert(header);
    }
    // The headers may be missing on a machine that builds the core alone.
    for (const char* name : {"QWidget", "QApplication", "QDialog", "QMainWindow", "QMessageBox",
                             "QtWidgets", "QWebEngineView"})
        names.insert(QString::fromLatin1(name));
    return names;
}

QString where(const Include& inc)
{
    return QStringLiteral("%1:%2: #include %3").arg(inc.file).arg(inc.line).arg(inc.target);
}

// Includes whose folder is reached back from the folder they include: folders that
// include each other, directly or round a longer loop.
QStringList folderCycles(const QList<Include>& includes)
{
    QMap<QString, QSet<QString>> edges; // from folder -> the folders it includes
    for (const Include& inc : includes) {
        if (inc.quoted)
            edges[folderOf(inc.file)].insert(folderOf(inc.target));
    }
    const auto reaches = [&edges](const QString& from, const QString& to) {
        QSet<QString> seen;
        QStringList todo{from};
        while (!todo.isEmpty()) {
            for (const QString& next : edges.value(todo.takeLast())) {
                if (!seen.contains(next))
                    todo.append(*seen.insert(next));
            }
        }
        return seen.contains(to);
    };
    QStringList problems;
    for (const Include& inc : includes) {
        const QString from = folderOf(inc.file), to = folderOf(inc.target);
        if (inc.quoted && !to.isEmpty() && from != to && reaches(to, from))
            problems.append(where(inc) +
                            QStringLiteral(" (folders include each other: %1, %2)").arg(from, to));
    }
    return problems;
}

QStringList layerViolations(const QString& root)
{
    const QList<Include> includes =
        includesUnder(root, {QStringLiteral("core"), QStringLiteral("ui"), QStringLiteral("cli"),
                             QStringLiteral("app")});
    const QSet<QString> widgetNames = widgetHeaders();
    QStringList problems;
    for (const Include& inc : includes) {
        const bool headless = inc.file.startsWith(QLatin1String("core/")) ||
                              inc.file.startsWith(QLatin1String("cli/"));
        if (headless && inc.quoted && inc.target.startsWith(QLatin1String("ui/")))
            problems.append(where(inc) + QStringLiteral(" (the headless code includes a window)"));
        // <QtWidgets/QLabel> by its module, <QLabel> by its name.
        if (headless && !inc.quoted &&
            widgetNames.contains(inc.target.section(QLatin1Char('/'), 0, 0)))
            problems.append(where(inc) + QStringLiteral(" (the headless code needs a widget)"));
        if (inc.file.startsWith(QLatin1String("ui/canvas/")) && inc.quoted &&
            inc.target.startsWith(QLatin1String("ui/")) &&
            !inc.target.startsWith(QLatin1String("ui/canvas/")))
            problems.append(where(inc) + QStringLiteral(" (the map window asks its host instead)"));
    }
    return problems + folderCycles(includes);
}

void writeFile(const QString& path, const QByteArray& text)
{
    QDir().mkpath(folderOf(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
}

} // namespace

class TestLayering : public QObject
{
    Q_OBJECT
private slots:
    void theTreeKeepsItsLayers()
    {
        const QStringList problems = layerViolations(QStringLiteral(VANTREL_SOURCE_DIR));
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    }

    void eachBrokenRuleIsNamedWithItsLine()
    {
        QTemporaryDir root;
        const QString r = root.path();
        writeFile(r + "/core/shape/Widgety.cpp",
                  "#include \"core/shape/Widgety.h\"\n\n#include <QWidget>\n");
        writeFile(r + "/core/shape/Viewy.h", "#include <QtWebEngineWidgets/QWebEngineView>\n");
        writeFile(r + "/core/document/Upward.cpp",
                  "// a comment\n#include \"ui/frame/MDIForm1.h\"\n");
        writeFile(r + "/ui/canvas/Canvas.cpp", "#include \"ui/dialogs/Zoom.h\"\n");
        writeFile(r + "/core/forms/A.h", "#include \"core/interchange/B.h\"\n");
        writeFile(r + "/core/interchange/B.h", "#include \"core/forms/A.h\"\n");
        writeFile(r + "/ui/frame/Fine.cpp",
                  "#include <QWidget>\n#include \"ui/canvas/Canvas.h\"\n");

        const QString report = layerViolations(r).join(QLatin1Char('\n'));
        for (const char* expected :
             {"core/shape/Widgety.cpp:3: #include QWidget",
              "core/shape/Viewy.h:1:", "core/document/Upward.cpp:2: #include ui/frame/MDIForm1.h",
              "ui/canvas/Canvas.cpp:1: #include ui/dialogs/Zoom.h", "core/forms, core/interchange"})
            QVERIFY2(report.contains(expected), qPrintable(report));
        QVERIFY2(!report.contains("ui/frame/Fine.cpp"), qPrintable(report));
    }
};

QTEST_APPLESS_MAIN(TestLayering)
#include "tst_layering.moc"
