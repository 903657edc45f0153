#pragma once

class QMdiArea;

// The Window menu's arrangements of the map windows.
class WindowArranger
{
public:
    // Overlapping, each a title bar below and right of the one before, the active one on
    // top; minimised windows stay as they are.
    static void Cascade(QMdiArea& Area);
    // One above the other, each as wide as the area; minimised windows stay as they are.
    static void TileHorizontally(QMdiArea& Area);
    // Lines the minimised windows up along the bottom edge, left to right.
    static void ArrangeIcons(QMdiArea& Area);
};
