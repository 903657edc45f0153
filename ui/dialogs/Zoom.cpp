#include "ui/dialogs/Zoom.h"

#include "core/base/ModalUi.h"
#include "core/forms/ZoomRules.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogButtons.h"
#include "ui/dialogs/DialogPlacement.h"
#include "ui/dialogs/SteppedNumberBox.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

Zoom::Zoom(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_percent(new QLineEdit(QStringLiteral("100"), this)),
      m_bar(new QScrollBar(Qt::Horizontal, this)), m_box(nullptr)
{
    setObjectName(QStringLiteral("Zoom"));
    setWindowTitle(QStringLiteral("Zoom"));

    m_percent->setObjectName(QStringLiteral("txtZooming"));
    m_percent->setMaximumWidth(60);
    m_bar->setObjectName(QStringLiteral("ZoomSize"));
    m_bar->setMinimumWidth(160);
    m_bar->setSingleStep(10);
    m_bar->setPageStep(10);
    m_box = new SteppedNumberBox(*m_percent, *m_bar, 100, 200);
    m_bar->setValue(100);
    m_box->SetText(QString::number(map.Document().ZoomLevel * 100));

    auto* row = new QHBoxLayout;
    row->addWidget(m_percent);
    row->addWidget(m_bar, 1);
    auto* frame = new QGroupBox(QStringLiteral("Zoom Level"), this);
    auto* form = new QFormLayout(frame);
    form->addRow(QStringLiteral("Percent to Zoom:"), row);

    QPushButton* ok = nullptr;
    QHBoxLayout* buttons = DialogButtons::OkCancel(*this, ok);
    connect(ok, &QPushButton::clicked, this, &Zoom::Ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);

    adjustSize();
    DialogPlacement::CentreOnScreen(*this);
}

void Zoom::Ok()
{
    m_box->Correct();
    const double level = ZoomRules::LevelFromPercentText(m_percent->text());
    const MapDocument& document = m_map.Document();
    if (!ZoomRules::Fits(level, document.SWidth, document.SHeight)) {
        m_ui.Message(ZoomRules::TooGreatMessage(), ModalUi::Icon::Critical);
        return;
    }
    m_map.SetZoomLevel(level);
    accept();
}
