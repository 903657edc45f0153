#include "core/shape/HandleSprites.h"

#include "core/shape/PatShape.h"

#include <QPainter>

const QImage& HandleSprites::For(const QColor& Fill)
{
    const QRgb key = Fill.rgba();
    for (const auto& [rgb, sprite] : m_sprites) {
        if (rgb == key)
            return sprite;
    }
    const ShapeRect h = PatShape::HandleRect(ShapePoint{0, 0});
    const int size = h.right - h.left + 1;
    QImage sprite(size, size, QImage::Format_ARGB32_Premultiplied);
    sprite.fill(Qt::transparent);
    QPainter painter(&sprite);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(Qt::white, 0));
    painter.setBrush(Fill);
    painter.drawEllipse(0, 0, h.right - h.left, h.bottom - h.top);
    painter.end();
    m_sprites.emplace_back(key, std::move(sprite));
    return m_sprites.back().second;
}
