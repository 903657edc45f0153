#include "ScriptedModalUi.h"
#include "interchange/GeneratedCodeForm.h"

#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

class TestGeneratedCodeForm : public QObject
{
    Q_OBJECT
private slots:
    void showsTheCodeReadOnly();
    void copyPutsTheWholeTextOnTheClipboard();
    void whatNowShowsThreeParagraphs();
    void closeWindowCloses();

private:
    static QString LongCode()
    {
        QString code = QStringLiteral("<map name=\"MyMap\">\r\n");
        for (int i = 0; i < 400; ++i)
            code +=
                QStringLiteral("<area shape=\"rect\" coords=\"%1,0,%2,10\" href=\"p%1.htm\">\r\n")
                    .arg(i)
                    .arg(i + 10);
        return code + QStringLiteral("</map>\r\n<img src=\"pic.gif\" usemap=\"#MyMap\">");
    }
};

void TestGeneratedCodeForm::showsTheCodeReadOnly()
{
    ScriptedModalUi ui;
    GeneratedCodeForm form(QStringLiteral("<map>\r\n</map>"), ui);
    QCOMPARE(form.windowTitle(), QStringLiteral("Map Code"));
    QCOMPARE(form.findChild<QGroupBox*>("Frame1")->title(), QStringLiteral("The Code"));
    auto* text = form.findChild<QPlainTextEdit*>("Text1");
    QVERIFY(text->isReadOnly());
    QCOMPARE(text->toPlainText(), QStringLiteral("<map>\n</map>"));
    QCOMPARE(form.findChild<QPushButton*>("Command1")->text(), QStringLiteral("Copy HTML"));
    QCOMPARE(form.findChild<QPushButton*>("Command2")->text(), QStringLiteral("What Now?"));
    QCOMPARE(form.findChild<QPushButton*>("Command3")->text(), QStringLiteral("Close Window"));
}

void TestGeneratedCodeForm::copyPutsTheWholeTextOnTheClipboard()
{
    ScriptedModalUi ui;
    const QString code = LongCode();
    GeneratedCodeForm form(code, ui);
    form.show();
    QGuiApplication::clipboard()->setText(QStringLiteral("something else"));
    QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), code);
    // The user sees what was copied: the whole text is selected.
    auto* text = form.findChild<QPlainTextEdit*>("Text1");
    QCOMPARE(text->textCursor().selectionStart(), 0);
    QCOMPARE(text->textCursor().selectionEnd(), text->document()->characterCount() - 1);
}

void TestGeneratedCodeForm::whatNowShowsThreeParagraphs()
{
    ScriptedModalUi ui;
    GeneratedCodeForm form(QStringLiteral("<map></map>"), ui);
    QTest::mouseClick(form.findChild<QPushButton*>("Command2"), Qt::LeftButton);
    QCOMPARE(ui.messages.size(), 1);
    QCOMPARE(ui.messages[0].icon, ModalUi::Icon::Information);
    const QStringList paragraphs = ui.messages[0].text.split(QStringLiteral("\n\n"));
    QCOMPARE(paragraphs.size(), 3);
    QCOMPARE(paragraphs[0],
             QStringLiteral("This is the HTML code for the image map.  Just copy and paste it "
                            "into your HTML document.  Note that you may want to change the SRC "
                            "property of the IMG tag if your image is located in a certain "
                            "directory at your site.  Also, if you are using an HTML editor and "
                            "aren't too familiar with what to do, here are two things you can "
                            "do:"));
    QCOMPARE(paragraphs[1],
             QStringLiteral("1) Open up Notepad or Wordpad and load the *.htm or *.html file.  "
                            "Then go to the area where you want the picture to appear and paste "
                            "the code in."));
    QCOMPARE(paragraphs[2],
             QStringLiteral("2) Many editors let you edit the code to the document manually, I'm "
                            "not sure what this feature is called in most, but if you are "
                            "familiar with it, you can do it that way too."));
}

void TestGeneratedCodeForm::closeWindowCloses()
{
    ScriptedModalUi ui;
    GeneratedCodeForm form(QStringLiteral("<map></map>"), ui);
    form.show();
    QVERIFY(form.isVisible());
    QTest::mouseClick(form.findChild<QPushButton*>("Command3"), Qt::LeftButton);
    QVERIFY(!form.isVisible());
    QVERIFY(ui.messages.isEmpty());
}

QTEST_MAIN(TestGeneratedCodeForm)
#include "tst_generatedcodeform.moc"
