#include "ui/tools/GeneratedCodeForm.h"

#include "core/base/ModalUi.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/MapFormatSetting.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QClipboard>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

GeneratedCodeForm::GeneratedCodeForm(const QString& code, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_ui(ui), m_code(code), m_shown(code), m_text(new QPlainTextEdit(this)),
      m_format(new QComboBox(this))
{
    setObjectName(QStringLiteral("GeneratedCodeForm"));
    setWindowTitle(QStringLiteral("Map Code"));

    auto* frame = new QGroupBox(QStringLiteral("The Code"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->setReadOnly(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_text->setPlainText(code);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(m_text);

    auto* copy = new QPushButton(QStringLiteral("Copy HTML"), this);
    copy->setObjectName(QStringLiteral("Command1"));
    auto* whatNow = new QPushButton(QStringLiteral("What Now?"), this);
    whatNow->setObjectName(QStringLiteral("Command2"));
    auto* close = new QPushButton(QStringLiteral("Close Window"), this);
    close->setObjectName(QStringLiteral("Command3"));
    connect(copy, &QPushButton::clicked, this, &GeneratedCodeForm::CopyHtml);
    connect(whatNow, &QPushButton::clicked, this, &GeneratedCodeForm::WhatNow);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);

    m_format->setObjectName(QStringLiteral("cboFormat"));
    for (MapFormat format : {MapFormat::Classic, MapFormat::Html5, MapFormat::Svg})
        m_format->addItem(MapFormats::Label(format), static_cast<int>(format));
    m_format->setEnabled(false);
    auto* formatLabel = new QLabel(QStringLiteral("&Format:"), this);
    formatLabel->setBuddy(m_format);
    connect(m_format, &QComboBox::activated, this, [this](int row) {
        const auto format = static_cast<MapFormat>(m_format->itemData(row).toInt());
        MapFormatSetting::Save(format);
        ShowFormat(format);
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(formatLabel);
    buttons->addWidget(m_format);
    buttons->addSpacing(12);
    buttons->addWidget(copy);
    buttons->addWidget(whatNow);
    buttons->addStretch(1);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame, 1);
    layout->addLayout(buttons);

    resize(640, 420);
    DialogPlacement::CentreOnScreen(*this);
}

void GeneratedCodeForm::SetFormats(std::function<QString(MapFormat)> Generate)
{
    m_generate = std::move(Generate);
    m_format->setEnabled(static_cast<bool>(m_generate));
    ShowFormat(MapFormatSetting::Load());
}

void GeneratedCodeForm::ShowFormat(MapFormat Format)
{
    if (Format != MapFormat::Classic && !m_generate)
        return;
    m_format->setCurrentIndex(m_format->findData(static_cast<int>(Format)));
    m_shown = Format == MapFormat::Classic ? m_code : m_generate(Format);
    m_text->setPlainText(m_shown);
}

std::function<QString(MapFormat)> GeneratedCodeForm::FormatsOf(ShapeCanvas& Map)
{
    return [map = QPointer<ShapeCanvas>(&Map)](MapFormat Format) {
        if (map.isNull())
            return QString();
        return FormattedMapCode::Generate(map->Document(), Format, MapCodeGenerator::Form::Viewing)
            .Text;
    };
}

void GeneratedCodeForm::CopyHtml()
{
    m_text->selectAll();
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    QCoreApplication::processEvents();
    // The box is read-only, so the code it shows is exactly the code it was given;
    // copying that keeps the generated CR LF line breaks.
    clipboard->setText(m_shown);
}

void GeneratedCodeForm::WhatNow()
{
    m_ui.Message(WhatNowText(), ModalUi::Icon::Information);
}

QString GeneratedCodeForm::WhatNowText()
{
    return QStringLiteral(
               "This is the HTML code for the image map.  Just copy and paste it into your HTML "
               "document.  Note that you may want to change the SRC property of the IMG tag if "
               "your image is located in a certain directory at your site.  Also, if you are "
               "using an HTML editor and aren't too familiar with what to do, here are two "
               "things you can do:") +
           QStringLiteral("\n\n") +
           QStringLiteral("1) Open up Notepad or Wordpad and load the *.htm or *.html file.  Then "
                          "go to the area where you want the picture to appear and paste the "
                          "code in.") +
           QStringLiteral("\n\n") +
           QStringLiteral("2) Many editors let you edit the code to the document manually, I'm "
                          "not sure what this feature is called in most, but if you are familiar "
                          "with it, you can do it that way too.");
}
