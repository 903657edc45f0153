#pragma once

#include "core/document/CanvasHost.h"

#include <QString>
#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QFrame;
class QToolButton;

// The frame's tool strip (Picture1): the command buttons and, in the group Frame1, the
// four mutually exclusive drawing-mode buttons PointOpt, RectOpt, CirOpt and PolyOpt.
// btnHelp is the last button. Buttons carry their object names; the frame connects them.
class ToolStrip : public QWidget
{
    Q_OBJECT
public:
    struct ButtonInfo
    {
        const char* name;
        const char* tooltip;
        const char* icon;
    };
    // The command buttons in strip order (btnHelp last).
    static const QList<ButtonInfo>& CommandButtons();

    explicit ToolStrip(QWidget* parent = nullptr);

    QToolButton* Button(const QString& Name) const;
    CanvasHost::DrawingMode Mode() const;
    void SelectMode(CanvasHost::DrawingMode Mode);

    // Frame1 fills the strip less a 4-pixel margin at the bottom, but only while the
    // strip is at least 40 pixels taller than the top of btnHelp; a shorter strip
    // leaves Frame1 as it was, so it never shrinks over the buttons.
    static int Frame1Height(int StripHeight, int HelpButtonTop, int CurrentHeight);

    // Whether the buttons are drawn smaller, as they are when the strip is too short for
    // them at their full size.
    bool IsCompact() const { return m_compact; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    // Sizes every button for the mode and gives Frame1's height for it.
    QSize SetCompact(bool Compact);

    QFrame* m_frame1;
    QButtonGroup* m_modes;
    int m_fullHeight = 0;
    bool m_compact = false;
};
