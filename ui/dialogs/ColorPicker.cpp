#include "ui/dialogs/ColorPicker.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

QScrollBar* ColourBar(const QString& name, QWidget* parent)
{
    auto* bar = new QScrollBar(Qt::Horizontal, parent);
    bar->setObjectName(name);
    bar->setRange(0, 255);
    bar->setSingleStep(1);
    bar->setPageStep(16);
    bar->setMinimumWidth(256);
    return bar;
}

} // namespace

ColorPicker::ColorPicker(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_ui(ui), m_editor(map.Document(),
                                          [&map] {
                                              map.SetShapeColors();
                                              map.DrawShapes();
                                          }),
      m_red(ColourBar(QStringLiteral("ScrollRed"), this)),
      m_green(ColourBar(QStringLiteral("ScrollGreen"), this)),
      m_blue(ColourBar(QStringLiteral("ScrollBlue"), this)), m_preview(new QFrame(this))
{
    setObjectName(QStringLiteral("ColorPicker"));
    setWindowTitle(QStringLiteral("Pick A Color"));

    auto* group = new QGroupBox(QStringLiteral("Choose Map Color"), this);
    auto* focus = new QRadioButton(QStringLiteral("Focus Color"), group);
    focus->setObjectName(QStringLiteral("Option1"));
    auto* normal = new QRadioButton(QStringLiteral("Normal Color"), group);
    normal->setObjectName(QStringLiteral("Option2"));
    auto* border = new QRadioButton(QStringLiteral("Border Color"), group);
    border->setObjectName(QStringLiteral("Option3"));
    focus->setChecked(true);
    auto* options = new QHBoxLayout;
    options->addWidget(focus);
    options->addWidget(normal);
    options->addWidget(border);

    m_preview->setObjectName(QStringLiteral("ColorPreview"));
    m_preview->setFrameShape(QFrame::Box);
    m_preview->setMinimumSize(72, 72);
    m_preview->setAutoFillBackground(true);

    auto* bars = new QGridLayout;
    const QString captions[] = {QStringLiteral("Red:"), QStringLiteral("Green:"),
                                QStringLiteral("Blue:")};
    QScrollBar* const scrolls[] = {m_red, m_green, m_blue};
    for (int i = 0; i < 3; ++i) {
        bars->addWidget(new QLabel(captions[i], group), i, 0);
        bars->addWidget(scrolls[i], i, 1);
        connect(scrolls[i], &QScrollBar::valueChanged, this, &ColorPicker::ScrollChanged);
    }
    bars->addWidget(m_preview, 0, 2, 3, 1);

    auto* groupLayout = new QVBoxLayout(group);
    groupLayout->addLayout(options);
    groupLayout->addLayout(bars);

    auto* reset = new QPushButton(QStringLiteral("Reset"), this);
    reset->setObjectName(QStringLiteral("Command1"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Command2"));
    auto* about = new QPushButton(QStringLiteral("About"), this);
    about->setObjectName(QStringLiteral("Command3"));
    // Enter closes with the colours as they are, unless a button has the focus: it must
    // not undo them by way of Reset.
    close->setDefault(true);
    connect(reset, &QPushButton::clicked, this, &ColorPicker::Reset);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    connect(about, &QPushButton::clicked, this, &ColorPicker::About);
    connect(focus, &QRadioButton::clicked, this, [this] { Choose(MapColorEditor::Which::Focus); });
    connect(normal, &QRadioButton::clicked, this,
            [this] { Choose(MapColorEditor::Which::Normal); });
    connect(border, &QRadioButton::clicked, this,
            [this] { Choose(MapColorEditor::Which::Border); });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(reset);
    buttons->addStretch(1);
    buttons->addWidget(about);
    buttons->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addLayout(buttons);

    ShowColour(m_editor.Current());
    adjustSize();
    DialogPlacement::CentreOnScreen(*this);
}

void ColorPicker::Choose(MapColorEditor::Which Colour)
{
    ShowColour(m_editor.Select(Colour));
}

void ColorPicker::ScrollChanged()
{
    PaintPreview(m_editor.Apply(m_red->value(), m_green->value(), m_blue->value()));
}

void ColorPicker::Reset()
{
    ShowColour(m_editor.Reset());
}

void ColorPicker::About()
{
    m_ui.Message(MapColorEditor::AboutText(), ModalUi::Icon::Information);
}

void ColorPicker::ShowColour(std::int32_t Colour)
{
    // The bars move together; applying each one as it moves would store mixed colours.
    const QSignalBlocker red(m_red);
    const QSignalBlocker green(m_green);
    const QSignalBlocker blue(m_blue);
    m_red->setValue(Module1::RedOf(Colour));
    m_green->setValue(Module1::GreenOf(Colour));
    m_blue->setValue(Module1::BlueOf(Colour));
    PaintPreview(Colour);
}

void ColorPicker::PaintPreview(std::int32_t Colour)
{
    QPalette palette = m_preview->palette();
    palette.setColor(QPalette::Window, QColor(Module1::RedOf(Colour), Module1::GreenOf(Colour),
                                              Module1::BlueOf(Colour)));
    m_preview->setPalette(palette);
}
