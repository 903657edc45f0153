#pragma once

class MDIForm1;
class QMenu;

// The View menu's view-scale items: look closer or farther (the standard zoom keys and
// Ctrl+=), actual size (Ctrl+0) and fit to window. They change how the active map is
// shown, never the map; its own zoom stays with Zoom In, Zoom Out and Custom Zoom.
class ViewCommands
{
public:
    static void AddTo(QMenu& View, MDIForm1& Frame);
};
