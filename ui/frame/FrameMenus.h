#pragma once

class MDIForm1;
class QMdiArea;
class QMenu;

// The frame's menu bar: every command with its caption, object name, icon and shortcut,
// connected to the frame's operation of the same row.
class FrameMenus
{
public:
    static void Create(MDIForm1& Frame);
    // Below the Window menu's arrangements: one checkable entry per open map, as
    // desktop multiple-document programs have.
    static void FillWindowList(QMenu& WindowMenu, QMdiArea& Area);
};
