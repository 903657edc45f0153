#pragma once

#include <QRect>

// Where the map window's viewport, scroll bars and corner button sit, in the window's
// client pixels.
struct CanvasLayout
{
    QRect HoldPicbox;
    QRect HScroll1;
    QRect VScroll1;
    QRect BntScrollEnd;
    int HoldImageTop = 0;

    // The layout after the client area became InnerWidth x InnerHeight. Below 50 pixels
    // on an axis nothing along that axis moves; the viewport keeps a margin of 16 pixels
    // besides the bar's thickness on the right and at the bottom.
    static CanvasLayout Resized(const CanvasLayout& Current, int InnerWidth, int InnerHeight);
};
