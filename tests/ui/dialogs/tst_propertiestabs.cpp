#include "CanvasFixture.h"
#include "FrameFixture.h"
#include "ui/dialogs/frmOptions.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>

// The Properties tab strip on small and on very big maps: the same captions in the same
// order, the right shape edited and written back, and never a tab per shape up front.
class TestPropertiesTabs : public QObject, CanvasFixture
{
    Q_OBJECT
private slots:
    void init() { NewCanvas(); }

    void smallMapHasATabForEveryShape()
    {
        AddShapes(3);
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(3);
        QTabBar* tabs = Tabs(dialog);
        QStringList captions;
        for (int i = 0; i < tabs->count(); ++i)
            captions << tabs->tabText(i);
        QCOMPARE(captions, (QStringList{"Map Properties", "Shape #1", "Shape #2", "Shape #3",
                                        "Default Area"}));
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u1"));

        // From the keyboard: Ctrl+Page Down and Ctrl+Tab go on a tab, Ctrl+Page Up and
        // Ctrl+Shift+Tab back, from whichever box has the focus, and stop at either end.
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
            QTest::keyClick(QApplication::focusWidget(), key, modifiers);
            QCoreApplication::processEvents();
            return tabs->tabText(tabs->currentIndex());
        };
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Shape #1"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u0"));
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Map Properties"));
        QCOMPARE(press(Qt::Key_PageUp, Qt::ControlModifier), QStringLiteral("Map Properties"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Shape #1"));
        QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), QStringLiteral("Shape #2"));
        QCOMPARE(press(Qt::Key_Tab, Qt::ControlModifier), QStringLiteral("Shape #3"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Default Area"));
        QCOMPARE(press(Qt::Key_PageDown, Qt::ControlModifier), QStringLiteral("Default Area"));
        QCOMPARE(press(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier),
                 QStringLiteral("Shape #3"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2"));
    }

    void bigMapOpensOnTheShapeAndWritesItBack()
    {
        AddShapes(5000);
        MapDocument& doc = m_canvas->Document();
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(2502); // Shape #2501, Shapes[2500]
        QTabBar* tabs = Tabs(dialog);
        QVERIFY(tabs->count() < 100);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #2501"));
        QCOMPARE(tabs->tabText(0), QStringLiteral("Map Properties"));
        QCOMPARE(tabs->tabText(tabs->count() - 1), QStringLiteral("Default Area"));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2500"));
        QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2500));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->setText(QStringLiteral("new"));

        // Shape numbers run on without gaps between the map and default area tabs.
        for (int i = 2; i < tabs->count() - 1; ++i)
            QCOMPARE(tabs->tabText(i),
                     QStringLiteral("Shape #%1").arg(tabs->tabText(1).mid(7).toInt() + i - 1));

        tabs->setCurrentIndex(tabs->currentIndex() + 1);
        QCOMPARE(doc.ShapeOrder().front(), std::int16_t(2501));
        QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u2501"));
        dialog.findChild<QLineEdit*>(QStringLiteral("txtComment"))->setText(QStringLiteral("c"));
        tabs->setCurrentIndex(tabs->count() - 1);
        dialog.findChild<QLineEdit*>(QStringLiteral("txtURL"))->setText(QStringLiteral("rest"));
        QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);

        QCOMPARE(doc.GetURL(2500), QStringLiteral("new"));
        QCOMPARE(doc.GetComment(2501), QStringLiteral("c"));
        QCOMPARE(doc.GetURL(2501), QStringLiteral("u2501"));
        QCOMPARE(doc.DefURL, QStringLiteral("rest"));
        for (const std::int16_t untouched : {0, 2499, 2502, 4999})
            QCOMPARE(doc.GetURL(untouched), QStringLiteral("u%1").arg(untouched));
    }

    // Stepping through the tabs one by one reaches every shape, in order, and the end.
    void steppingWalksTheWholeRange()
    {
        AddShapes(300);
        frmOptions dialog(*m_canvas, m_host->ui);
        dialog.OpenOnTab(2);
        QTabBar* tabs = Tabs(dialog);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #1"));
        for (int shape = 2; shape <= 300; ++shape) {
            tabs->setCurrentIndex(tabs->currentIndex() + 1);
            QCoreApplication::processEvents(); // the strip moves along after the click
            QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Shape #%1").arg(shape));
            QCOMPARE(Text(dialog, "txtURL"), QStringLiteral("u%1").arg(shape - 1));
        }
        tabs->setCurrentIndex(tabs->currentIndex() + 1);
        QCOMPARE(tabs->tabText(tabs->currentIndex()), QStringLiteral("Default Area"));
        tabs->setCurrentIndex(0);
        QCOMPARE(dialog.Model().ShownTab(), 1);
    }

private:
    void AddShapes(int Count) { AdoptRectangles(m_canvas->Document(), Count, QStringLiteral("u")); }
    static QTabBar* Tabs(QDialog& dialog)
    {
        return dialog.findChild<QTabBar*>(QStringLiteral("tbsOptions"));
    }
    static QString Text(QDialog& dialog, const char* name)
    {
        return dialog.findChild<QLineEdit*>(QLatin1String(name))->text();
    }
};

QTEST_MAIN(TestPropertiesTabs)
#include "tst_propertiestabs.moc"
