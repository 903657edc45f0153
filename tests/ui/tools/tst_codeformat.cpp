#include "FakeCanvasHost.h"
#include "ShapeRow.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFormatSetting.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/tools/GeneratedCodeForm.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

// The code window's Format choice: what it shows, copies and remembers.
class TestCodeFormat : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_settings.isValid());
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
        QCoreApplication::setOrganizationName(QStringLiteral("VantrelTest"));
    }

    void choosingAFormatShowsAndCopiesIt()
    {
        FakeCanvasHost host;
        ShapeCanvas map(host);
        AddShapeRow(map.Document(), "1|10,20,30,20,30,40,10,40|a.htm?x&y|Ann|||0|");
        MapDocument& d = map.Document();
        const QString classic =
            MapCodeGenerator::GenerateMapCode(d, MapCodeGenerator::Form::Viewing);
        MapFormatSetting::Save(MapFormat::Classic);

        {
            GeneratedCodeForm form(classic, host.ui);
            form.SetFormats(GeneratedCodeForm::FormatsOf(map));
            auto* text = form.findChild<QPlainTextEdit*>("Text1");
            auto* format = form.findChild<QComboBox*>("cboFormat");
            QVERIFY(format && format->isEnabled());
            QCOMPARE(format->currentText(), QStringLiteral("Classic"));
            QCOMPARE(text->toPlainText(), QString(classic).replace("\r\n", "\n"));

            // Choose HTML5 with the keyboard, as a user would.
            format->setFocus();
            QTest::keyClick(format, Qt::Key_Down);
            QCOMPARE(format->currentText(), QStringLiteral("HTML5"));
            const QString html5 =
                FormattedMapCode::Generate(d, MapFormat::Html5, MapCodeGenerator::Form::Viewing)
                    .Text;
            QVERIFY(text->toPlainText().contains("href=\"a.htm?x&amp;y\""));
            QTest::mouseClick(form.findChild<QPushButton*>("Command1"), Qt::LeftButton);
            QCOMPARE(QGuiApplication::clipboard()->text(), html5);
        }
        QCOMPARE(MapFormatSetting::Load(), MapFormat::Html5);

        // The next window opens on the remembered format.
        GeneratedCodeForm again(classic, host.ui);
        again.SetFormats(GeneratedCodeForm::FormatsOf(map));
        QCOMPARE(again.findChild<QComboBox*>("cboFormat")->currentText(), QStringLiteral("HTML5"));
        again.ShowFormat(MapFormat::Svg);
        QVERIFY(again.ShownCode().contains("<svg "));
        again.ShowFormat(MapFormat::Classic);
        QCOMPARE(again.ShownCode(), classic);
        MapFormatSetting::Save(MapFormat::Classic);
    }

    void withoutAMapOnlyTheClassicCodeIsOffered()
    {
        MapFormatSetting::Save(MapFormat::Svg);
        ScriptedModalUi ui;
        GeneratedCodeForm form(QStringLiteral("<map name=\"x\">"), ui);
        QVERIFY(!form.findChild<QComboBox*>("cboFormat")->isEnabled());
        QCOMPARE(form.ShownCode(), QStringLiteral("<map name=\"x\">"));
        MapFormatSetting::Save(MapFormat::Classic);
    }

private:
    QTemporaryDir m_settings;
};

QTEST_MAIN(TestCodeFormat)
#include "tst_codeformat.moc"
