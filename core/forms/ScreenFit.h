#pragma once

#include <QMargins>
#include <QRect>
#include <QSize>

// Where a window goes so that it lies wholly on the free part of its screen (the screen
// less panels and docks), in the logical pixels of that screen. Sizes and positions are
// the window's own area; Decoration is what the window manager adds around it.
class ScreenFit
{
public:
    // A window that already fits keeps its place and size. One that is too large shrinks,
    // never below Minimum, about its own centre; then it moves in from any edge it crosses.
    // When even Minimum does not fit, its top left stays on the screen, so the title bar
    // and the first controls can be reached.
    static QRect Place(const QRect& Available, const QRect& Window, const QMargins& Decoration,
                       const QSize& Minimum);
    // Whether Window with its Decoration lies inside Available.
    static bool Fits(const QRect& Available, const QRect& Window, const QMargins& Decoration);
};
