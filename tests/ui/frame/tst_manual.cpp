#include "FrameFixture.h"
#include "ManualText.h"

#include <QMenu>
#include <QMenuBar>

// The user manual against the main window: every menu, command and key it has is named, so
// a command added without a word in the manual is caught here.
class TestManual : public QObject
{
    Q_OBJECT
    static QString Caption(const QString& text) { return QString(text).remove(QLatin1Char('&')); }

private slots:
    void namesEveryMenuCommandAndKey()
    {
        const QString manual = ManualText();
        QVERIFY(manual.contains(QStringLiteral("Vantrel")));
        FrameRun run;
        QStringList missing;
        int commands = 0;
        const std::function<void(QMenu&)> walk = [&](QMenu& menu) {
            if (!manual.contains(Caption(menu.title())))
                missing << Caption(menu.title());
            for (QAction* action : menu.actions()) {
                // Lists that fill themselves (open maps, recent files) carry no name.
                if (action->isSeparator() || action->objectName().isEmpty())
                    continue;
                if (QMenu* sub = action->menu()) {
                    walk(*sub);
                    continue;
                }
                ++commands;
                if (!manual.contains(Caption(action->text())))
                    missing << Caption(action->text());
                // The key the menu shows; the platform may add bindings of its own.
                const QString shown = action->shortcut().toString(QKeySequence::PortableText);
                if (!manual.contains(shown))
                    missing << Caption(action->text()) + QStringLiteral(" ") + shown;
            }
        };
        for (QAction* top : run.frame.menuBar()->actions()) {
            if (top->menu() != nullptr)
                walk(*top->menu());
        }
        QVERIFY2(commands > 40, qPrintable(QString::number(commands)));
        // The keys of the frame itself, outside the menus (closing a map).
        for (QAction* action : run.frame.actions()) {
            for (const QKeySequence& keys : action->shortcuts()) {
                if (!manual.contains(keys.toString(QKeySequence::PortableText)))
                    missing << keys.toString(QKeySequence::PortableText);
            }
        }
        QVERIFY2(missing.isEmpty(), qPrintable(missing.join(QStringLiteral(", "))));
    }
};

QTEST_MAIN(TestManual)
#include "tst_manual.moc"
