#pragma once

#include <QColor>
#include <QImage>
#include <vector>

// Ready-drawn vertex handles, one picture per fill colour. Blitting a picture is many
// times cheaper than rasterising an ellipse, which is what a repaint of thousands of
// shapes spends its time on; each picture holds exactly the pixels of the ellipse.
class HandleSprites
{
public:
    // The handle filled with Fill, its top-left pixel at the handle square's corner.
    const QImage& For(const QColor& Fill);

private:
    std::vector<std::pair<QRgb, QImage>> m_sprites;
};
