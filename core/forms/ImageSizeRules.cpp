#include "core/forms/ImageSizeRules.h"

#include "core/forms/LeadingNumber.h"

QString ImageSizeRules::Refusal(const QString& WidthText, const QString& HeightText)
{
    const double width = LeadingNumber::Of(WidthText);
    const double height = LeadingNumber::Of(HeightText);
    if (width < 20)
        return QStringLiteral("The width of the image is too small.");
    if (height < 20)
        return QStringLiteral("The height of the image is too small.");
    if (width * height > 4000000.0)
        return QStringLiteral("The image size is too big.");
    return QString();
}

QString ImageSizeRules::AboutText()
{
    return QStringLiteral("This feature effects the appearance of the image's size when it is "
                          "displayed on a webpage.");
}
