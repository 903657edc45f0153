#include "ui/dialogs/ImageSize.h"

#include "core/base/ModalUi.h"
#include "core/base/Numeric.h"
#include "core/forms/ImageSizeRules.h"
#include "core/forms/LeadingNumber.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"
#include "ui/dialogs/DigitsOnly.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

ImageSize::ImageSize(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_width(new QLineEdit(QStringLiteral("100"), this)),
      m_height(new QLineEdit(QStringLiteral("100"), this))
{
    setObjectName(QStringLiteral("ImageSize"));
    setWindowTitle(QStringLiteral("Image Size"));

    // The view goes back to the picture's top-left corner.
    for (const char* name : {"VScroll1", "HScroll1"}) {
        if (auto* bar = map.findChild<QScrollBar*>(QLatin1String(name)); bar && bar->isEnabled())
            bar->setValue(0);
    }

    m_width->setObjectName(QStringLiteral("txtWidth"));
    m_height->setObjectName(QStringLiteral("txtHeight"));
    DigitsOnly::Apply(*m_width);
    DigitsOnly::Apply(*m_height);
    m_width->setText(QString::number(map.Document().SWidth));
    m_height->setText(QString::number(map.Document().SHeight));

    auto* frame = new QGroupBox(QStringLiteral("Image Size"), this);
    auto* form = new QFormLayout(frame);
    form->addRow(QStringLiteral("Picture Width:"), m_width);
    form->addRow(QStringLiteral("Picture Height:"), m_height);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("Command1"));
    ok->setDefault(true);
    auto* about = new QPushButton(QStringLiteral("About"), this);
    about->setObjectName(QStringLiteral("Command2"));
    auto* cancel = new QPushButton(QStringLiteral("Cancel"), this);
    cancel->setObjectName(QStringLiteral("Command3"));
    connect(ok, &QPushButton::clicked, this, &ImageSize::Ok);
    connect(about, &QPushButton::clicked, this, &ImageSize::About);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(ok);
    buttons->addWidget(about);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);

    adjustSize();
    DialogPlacement::CentreOnScreen(*this);
}

void ImageSize::Ok()
{
    const QString refusal = ImageSizeRules::Refusal(m_width->text(), m_height->text());
    if (!refusal.isEmpty()) {
        m_ui.Message(refusal, ModalUi::Icon::Critical);
        return;
    }
    // Resizing always happens at 100 per cent.
    if (m_map.Document().ZoomLevel != 1.0)
        m_map.SetZoomLevel(1.0);
    m_map.Document().SWidth = RoundToInt32(LeadingNumber::Of(m_width->text()));
    m_map.Document().SHeight = RoundToInt32(LeadingNumber::Of(m_height->text()));
    // Rebuilds the shown picture from the loaded one at the new size, grid included,
    // and lets the scroll bars follow.
    m_map.DrawGrid(true);
    accept();
}

void ImageSize::About()
{
    m_ui.Message(ImageSizeRules::AboutText(), ModalUi::Icon::Information);
}
