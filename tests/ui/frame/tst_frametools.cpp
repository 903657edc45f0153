#include "FrameFixture.h"
#include "ui/frame/ToolStrip.h"

#include <QApplication>
#include <QToolButton>

// Every tool window opens from its menu item or button through the frame's dialog hook;
// what a window does is tested with the window itself.
class TestFrameTools : public QObject
{
    Q_OBJECT
private slots:
    void toolWindowOpensThroughTheFrame_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("dialog");
        const QString table = QStringLiteral(
            "CustomZoom=Zoom|theimagesize=ImageSize|Gridoptions=GridForm|MapColors=ColorPicker|"
            "btnColors=ColorPicker|ConvertToShapes=ConvertHTMLtoMap|mnuURLChecker=URLChecker|"
            "generatecode=GeneratedCodeForm|btnGen=GeneratedCodeForm|ShapeProperties=frmOptions|"
            "btnProp=frmOptions|mnuCredits=Credits");
        for (const QString& row : table.split(QLatin1Char('|'))) {
            const QString command = row.section(QLatin1Char('='), 0, 0);
            QTest::newRow(qPrintable(command)) << command << row.section(QLatin1Char('='), 1);
        }
    }
    void toolWindowOpensThroughTheFrame()
    {
        QFETCH(QString, command);
        QFETCH(QString, dialog);
        FrameRun run;
        MDIForm1& frame = run.frame;
        QStringList shown;
        run.script = [&shown](QDialog& d) { shown.append(d.objectName()); };
        QTemporaryDir dir;
        ShapeCanvas* map = frame.NewMapFromPicture(SavePicture(dir.filePath("pic.png")));
        MapDocument& doc = map->Document(); // the code window needs a shape
        doc.Shape(doc.AddShape()).SetInfo(nullptr, doc.FocusColor, Rectangle, 1.0, 10, 10);
        if (QAction* action = frame.findChild<QAction*>(command))
            action->trigger();
        else
            frame.Tools().Button(command)->click();
        QCOMPARE(shown, QStringList{dialog});
    }
};

int main(int argc, char** argv)
{
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    TestFrameTools test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_frametools.moc"
