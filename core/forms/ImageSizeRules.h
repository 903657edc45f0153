#pragma once

#include <QString>

// What the image size dialog accepts: both sides at least 20 pixels and at most
// 4,000,000 pixels in all.
class ImageSizeRules
{
public:
    // The message refusing the typed size, or empty when it is accepted. Checked in
    // this order: width, height, area.
    static QString Refusal(const QString& WidthText, const QString& HeightText);
    static QString AboutText();
};
