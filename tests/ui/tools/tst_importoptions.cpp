#include "FakeCanvasHost.h"
#include "ShapeRow.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/ConvertHTMLtoMap.h"
#include "ui/tools/ImportWithOptions.h"

#include <QApplication>
#include <QCheckBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

const QString TwoMaps = "<map name=\"Top\"><area shape=rect coords=1,1,5,5 href=A.htm></map>"
                        "<MAP NAME=\"Bottom\"><AREA SHAPE=CIRCLE COORDS=20,20,5 HREF=B.htm>"
                        "<AREA SHAPE=RECT COORDS=0,0,9,9 HREF=C.htm></MAP>";

// The import dialog's two options, as a user ticks them.
class TestImportOptions : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        m_s = std::make_unique<Session>();
        AddShapeRow(Doc(), "1|50,50,60,50,60,60,50,60|old.htm|Old|||0|");
        Doc().MapName = QStringLiteral("Mine");
        m_s->dialog.show();
    }

    void optionsStartOff()
    {
        auto* keep = m_s->dialog.findChild<QCheckBox*>("chkKeepText");
        auto* add = m_s->dialog.findChild<QCheckBox*>("chkAddShapes");
        QCOMPARE(keep->text(), QStringLiteral("&Keep text as written"));
        QCOMPARE(add->text(), QStringLiteral("&Add to the current shapes"));
        // Off, the dialog converts as it always did (the HTML code test's cases).
        QVERIFY(!keep->isChecked() && !add->isChecked());
    }

    void keepTextKeepsCaseTitlesAndAlerts()
    {
        Generate(
            "<map name=\"Nav Bar\"><area shape=\"rect\" coords=\"1,2,30,40\" href=\"Page.HTM\" "
            "alt=\"Caf&eacute;\" title=\"Go &amp; see\" onclick=\"alert('Hi!')\"></map>",
            true, false);
        QCOMPARE(m_s->dialog.result(), int(QDialog::Accepted));
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        const PatShape& s = Doc().Shape(0);
        QCOMPARE(s.URL, QStringLiteral("Page.HTM"));
        QCOMPARE(s.Comment, QString::fromUtf8("Caf\xc3\xa9"));
        QCOMPARE(s.StatusString, QStringLiteral("Go & see"));
        QCOMPARE(s.AlertString, QStringLiteral("Hi!"));
        QVERIFY(s.AlertBox != 0);
        QCOMPARE(Doc().MapName, QStringLiteral("Nav Bar"));
        QVERIFY(m_s->host.ui.messages.isEmpty());
    }

    void addKeepsTheCurrentShapes()
    {
        Generate("<map name=\"x\"><area shape=\"rect\" coords=\"1,1,5,5\" href=\"New.htm\"></map>",
                 false, true);
        QCOMPARE(Doc().ItemCount(), std::int16_t(1));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("old.htm"));
        QCOMPARE(Doc().Shape(1).URL, QStringLiteral("new.htm")); // classic reading: lower case
        QCOMPARE(Doc().MapName, QStringLiteral("Mine"));
    }

    void theUserPicksOneOfSeveralMaps()
    {
        m_s->host.ui.choiceAnswers.enqueue(1);
        Generate(TwoMaps, true, true);
        QCOMPARE(m_s->host.ui.choices,
                 QStringList({ImportWithOptions::ChooseMapPrompt() +
                              "|Convert HTML to Map|Top (1 areas);Bottom (2 areas)"}));
        QCOMPARE(Doc().ItemCount(), std::int16_t(2));
        QCOMPARE(Doc().Shape(1).URL, QStringLiteral("B.htm"));
        QCOMPARE(Doc().Shape(2).URL, QStringLiteral("C.htm"));
    }

    void cancellingThePickChangesNothing()
    {
        m_s->host.ui.choiceAnswers.enqueue(std::nullopt);
        Generate(TwoMaps, true, false);
        QCOMPARE(Doc().ItemCount(), std::int16_t(0));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("old.htm"));
        QVERIFY(m_s->dialog.isVisible());

        // A failure leaves the map and the dialog as they were, with the reason.
        Generate("<map name=x><area shape=rect coords=\"1,x\"></map>", true, false);
        QCOMPARE(m_s->host.ui.messageTexts(),
                 QStringList({"Area #1 has coordinates that cannot be read: \"1,x\"."}));
        QCOMPARE(Doc().Shape(0).URL, QStringLiteral("old.htm"));
        QVERIFY(m_s->dialog.isVisible());
    }

private:
    void Generate(const QString& code, bool keepText, bool add)
    {
        m_s->dialog.findChild<QPlainTextEdit*>("Text1")->setPlainText(code);
        auto* keep = m_s->dialog.findChild<QCheckBox*>("chkKeepText");
        auto* adding = m_s->dialog.findChild<QCheckBox*>("chkAddShapes");
        if (keep->isChecked() != keepText)
            QTest::mouseClick(keep, Qt::LeftButton, {}, QPoint(5, keep->height() / 2));
        if (adding->isChecked() != add)
            QTest::mouseClick(adding, Qt::LeftButton, {}, QPoint(5, adding->height() / 2));
        QCOMPARE(keep->isChecked(), keepText);
        QCOMPARE(adding->isChecked(), add);
        QTest::mouseClick(m_s->dialog.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    }
    MapDocument& Doc() { return m_s->map.Document(); }

    struct Session
    {
        FakeCanvasHost host;
        ShapeCanvas map{host};
        ConvertHTMLtoMap dialog{map, host.ui};
    };
    std::unique_ptr<Session> m_s;
};

QTEST_MAIN(TestImportOptions)
#include "tst_importoptions.moc"
