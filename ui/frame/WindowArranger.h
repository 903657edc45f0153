#pragma once

class QMdiArea;

// The Window menu's arrangements of the map windows.
class WindowArranger
{
public:
    static void Cascade(QMdiArea& Area);
    // One above the other, each as wide as the area; minimised windows stay as they are.
    static void TileHorizontally(QMdiArea& Area);
    // Lines the minimised windows up along the bottom edge, left to right.
    static void ArrangeIcons(QMdiArea& Area);
};
