#pragma once

// What one scroll bar of the map window shows for a surface of a given extent in a
// viewport of a given extent (pixels along one axis).
struct ScrollBarRange
{
    bool Visible = false;
    int Maximum = 0;
    int LargeChange = 1;
    int SmallChange = 1;

    // A surface that fits (equal included) needs no bar.
    static ScrollBarRange For(double Surface, double Viewport);
};
