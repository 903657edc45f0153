#include "ui/dialogs/GridForm.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "core/forms/GridOptions.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogButtons.h"
#include "ui/dialogs/DialogPlacement.h"
#include "ui/dialogs/SteppedNumberBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>
#include <exception>

namespace {

QIcon Swatch(std::int32_t colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(QColor(Module1::RedOf(colour), Module1::GreenOf(colour), Module1::BlueOf(colour)));
    QPainter painter(&pixmap);
    painter.setPen(Qt::black);
    painter.drawRect(0, 0, 15, 15);
    return QIcon(pixmap);
}

} // namespace

GridForm::GridForm(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_colors(new QComboBox(this)),
      m_styles(new QComboBox(this)), m_spacing(new QLineEdit(QStringLiteral("10"), this)),
      m_spacingBar(new QScrollBar(Qt::Horizontal, this)), m_spacingBox(nullptr),
      m_display(new QCheckBox(QStringLiteral("Display Grid On Image"), this)),
      m_snap(new QCheckBox(QStringLiteral("Snap Shapes To Grid"), this))
{
    setObjectName(QStringLiteral("GridForm"));
    setWindowTitle(QStringLiteral("Grid Options"));

    m_colors->setObjectName(QStringLiteral("ImageCombo1"));
    const QStringList keys = GridOptions::ColorKeys();
    const QStringList captions = GridOptions::ColorCaptions();
    for (int i = 0; i < captions.size(); ++i)
        m_colors->addItem(Swatch(GridOptions::Colors()[std::size_t(i)]), captions[i], keys[i]);
    m_styles->setObjectName(QStringLiteral("StyleCombo"));
    m_styles->addItems(GridOptions::StyleNames());

    m_spacing->setObjectName(QStringLiteral("txtSpacing"));
    m_spacing->setMaximumWidth(60);
    m_spacingBar->setObjectName(QStringLiteral("WidthSize"));
    m_spacingBar->setMinimumWidth(160);
    m_spacingBar->setValue(10);
    m_spacingBox = new SteppedNumberBox(*m_spacing, *m_spacingBar, 4, 100);
    m_display->setObjectName(QStringLiteral("Check1"));
    m_snap->setObjectName(QStringLiteral("Check2"));
    // Snapping to a grid that is not shown is not possible.
    connect(m_display, &QCheckBox::toggled, this, [this](bool on) {
        if (!on)
            m_snap->setChecked(false);
    });
    connect(m_snap, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            m_display->setChecked(true);
    });

    auto* spacingRow = new QHBoxLayout;
    spacingRow->addWidget(m_spacing);
    spacingRow->addWidget(m_spacingBar, 1);

    auto* frame = new QGroupBox(QStringLiteral("Grid"), this);
    auto* form = new QFormLayout(frame);
    form->addRow(QStringLiteral("Line Color:"), m_colors);
    form->addRow(QStringLiteral("Grid Style:"), m_styles);
    form->addRow(QStringLiteral("Line Spacing:"), spacingRow);
    form->addRow(m_display);
    form->addRow(m_snap);

    QPushButton* ok = nullptr;
    QHBoxLayout* buttons = DialogButtons::OkCancel(*this, ok);
    connect(ok, &QPushButton::clicked, this, &GridForm::Ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(buttons);

    const GridOptions::Fields fields = GridOptions::Read(map.Document());
    m_styles->setCurrentIndex(fields.Style);
    m_colors->setCurrentIndex(fields.ColorNum - 1);
    m_spacingBox->SetText(fields.Spacing);
    m_display->setChecked(fields.Display);
    m_snap->setChecked(fields.Snap);

    adjustSize();
    DialogPlacement::CentreOnScreen(*this);
}

void GridForm::Ok()
{
    m_spacingBox->Correct();
    GridOptions::Fields fields;
    fields.ColorNum = m_colors->currentIndex() + 1;
    fields.Style = m_styles->currentIndex();
    fields.Spacing = m_spacing->text();
    fields.Display = m_display->isChecked();
    fields.Snap = m_snap->isChecked();
    try {
        GridOptions::Write(fields, m_map.Document());
        m_map.DrawGrid();
    } catch (const std::exception& error) {
        m_ui.Message(QString::fromUtf8(error.what()), ModalUi::Icon::Critical);
        return;
    }
    accept();
}
