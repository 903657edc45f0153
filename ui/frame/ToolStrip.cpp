#include "ui/frame/ToolStrip.h"

#include "ui/frame/AppResources.h"

#include <QButtonGroup>
#include <QFrame>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QResizeEvent>
#include <QToolButton>

namespace {

constexpr int ButtonSize = 38;
constexpr int IconSize = 26;
// On a short screen (a large scale factor) the buttons shrink so the frame still fits.
constexpr int CompactButtonSize = 30;
constexpr int CompactIconSize = 20;
constexpr int Margin = 4;

struct ModeInfo
{
    const char* name;
    const char* tooltip;
    const char* icon;
    CanvasHost::DrawingMode mode;
};

const ModeInfo Modes[] = {
    {"PointOpt", "Pointer Mode", "pointer", CanvasHost::DrawingMode::Pointer},
    {"RectOpt", "Rectangle Mode", "rectangle", CanvasHost::DrawingMode::Rectangle},
    {"CirOpt", "Circle Mode", "circle", CanvasHost::DrawingMode::Circle},
    {"PolyOpt", "Polygon Mode", "polygon", CanvasHost::DrawingMode::Polygon},
};

QToolButton* MakeButton(QWidget* parent, const char* name, const char* tooltip, const char* icon)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromLatin1(tooltip));
    button->setIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(icon))));
    button->setIconSize(QSize(IconSize, IconSize));
    button->setFixedSize(ButtonSize, ButtonSize);
    button->setAutoRaise(true);
    return button;
}

QFrame* Rule(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

const QList<ToolStrip::ButtonInfo>& ToolStrip::CommandButtons()
{
    static const QList<ButtonInfo> buttons{
        {"btnNewImage", "New Image", "new"},
        {"btnOpen", "Load Map", "open"},
        {"btnSave", "Save Map", "save"},
        {"bntSaveAs", "Save Map As", "saveas"},
        {"btnCut", "Cut Shape", "cut"},
        {"btnCopy", "Copy Shape", "copy"},
        {"btnPaste", "Paste Shape", "paste"},
        {"btnDelete", "Remove Shape", "delete"},
        {"btnProp", "Shape Properties", "properties"},
        {"btnColors", "Set The Map's Colors", "colors"},
        {"btnGen", "Generate Code", "generate"},
        {"btnTest", "Test Map", "test"},
        {"btnHelp", "Help", "help"},
    };
    return buttons;
}

ToolStrip::ToolStrip(QWidget* parent)
    : QWidget(parent), m_frame1(new QFrame(this)), m_modes(new QButtonGroup(this))
{
    AppResources::Load();
    setObjectName(QStringLiteral("Picture1"));
    m_frame1->setObjectName(QStringLiteral("Frame1"));
    m_frame1->setFrameShape(QFrame::StyledPanel);
    m_frame1->setFrameShadow(QFrame::Raised);

    auto* grid = new QGridLayout(m_frame1);
    grid->setContentsMargins(3, 3, 3, 3);
    grid->setSpacing(2);
    int row = 0;
    const QList<ButtonInfo>& buttons = CommandButtons();
    // Pairs of related commands share a row: file, edit, options, code and test.
    for (int i = 0; i + 1 < buttons.size(); ++i) {
        const ButtonInfo& b = buttons.at(i);
        grid->addWidget(MakeButton(m_frame1, b.name, b.tooltip, b.icon), row, i % 2);
        if (i % 2 == 1)
            ++row;
        if (i == 3 || i == 7 || i == 11)
            grid->addWidget(Rule(m_frame1), row++, 0, 1, 2);
        // Undo and redo lead the edit group.
        if (i == 3) {
            grid->addWidget(MakeButton(m_frame1, "btnUndo", "Undo", "undo"), row, 0);
            grid->addWidget(MakeButton(m_frame1, "btnRedo", "Redo", "redo"), row++, 1);
        }
    }

    auto* caption = new QLabel(tr("Draw"), m_frame1);
    caption->setAlignment(Qt::AlignCenter);
    grid->addWidget(caption, row++, 0, 1, 2);
    m_modes->setExclusive(true);
    int index = 0;
    for (const ModeInfo& m : Modes) {
        QToolButton* button = MakeButton(m_frame1, m.name, m.tooltip, m.icon);
        button->setCheckable(true);
        m_modes->addButton(button, static_cast<int>(m.mode));
        grid->addWidget(button, row + index / 2, index % 2);
        ++index;
    }
    row += 2;
    m_modes->button(static_cast<int>(CanvasHost::DrawingMode::Pointer))->setChecked(true);

    grid->addWidget(Rule(m_frame1), row++, 0, 1, 2);
    const ButtonInfo& help = buttons.constLast();
    grid->addWidget(MakeButton(m_frame1, help.name, help.tooltip, help.icon), row++, 0, 1, 2,
                    Qt::AlignHCenter);
    grid->setRowStretch(row, 1);

    m_fullHeight = SetCompact(false).height() + 2 * Margin;
    const int compactHeight = SetCompact(true).height() + 2 * Margin;
    const QSize hint = SetCompact(false);
    m_frame1->setGeometry(Margin, Margin, hint.width(), hint.height());
    setFixedWidth(hint.width() + 2 * Margin);
    setMinimumHeight(compactHeight);
}

QSize ToolStrip::SetCompact(bool Compact)
{
    m_compact = Compact;
    const int size = Compact ? CompactButtonSize : ButtonSize;
    const int icon = Compact ? CompactIconSize : IconSize;
    for (QToolButton* button : m_frame1->findChildren<QToolButton*>()) {
        button->setFixedSize(size, size);
        button->setIconSize(QSize(icon, icon));
    }
    m_frame1->layout()->activate();
    return m_frame1->sizeHint();
}

QToolButton* ToolStrip::Button(const QString& Name) const
{
    return m_frame1->findChild<QToolButton*>(Name);
}

CanvasHost::DrawingMode ToolStrip::Mode() const
{
    const int id = m_modes->checkedId();
    return id < 0 ? CanvasHost::DrawingMode::Pointer : static_cast<CanvasHost::DrawingMode>(id);
}

void ToolStrip::SelectMode(CanvasHost::DrawingMode Mode)
{
    m_modes->button(static_cast<int>(Mode))->setChecked(true);
}

int ToolStrip::Frame1Height(int StripHeight, int HelpButtonTop, int CurrentHeight)
{
    if (StripHeight > HelpButtonTop + 40)
        return StripHeight - 2 * Margin;
    return CurrentHeight;
}

void ToolStrip::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool compact = event->size().height() < m_fullHeight;
    if (compact != m_compact)
        m_frame1->resize(m_frame1->width(), SetCompact(compact).height());
    const int helpTop = Button(QStringLiteral("btnHelp"))->y() + m_frame1->y();
    m_frame1->resize(m_frame1->width(),
                     Frame1Height(event->size().height(), helpTop, m_frame1->height()));
}
