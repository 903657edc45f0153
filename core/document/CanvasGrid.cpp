#include "core/document/CanvasGrid.h"

#include "core/base/Numeric.h"
#include "core/shape/ShapePainter.h"

#include <QImage>
#include <QPainter>
#include <cmath>

Qt::PenStyle CanvasGrid::PenStyleOf(std::int32_t GridStyle)
{
    switch (GridStyle) {
    case 1:
        return Qt::DashLine;
    case 2:
        return Qt::DotLine;
    default:
        return Qt::SolidLine;
    }
}

void CanvasGrid::DrawGridLines(QImage& Buffer, double Step, std::int32_t GridStyle,
                               std::int32_t GridColor)
{
    // Finer than two pixels a grid only paints the picture over, and a pitch too small to
    // move a single-precision position would never end the loops (a map file may hold
    // any positive spacing and zoom).
    if (Buffer.isNull() || !(Step >= FinestPitch))
        return;
    QPainter painter(&Buffer);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(ShapePainter::ToQColor(GridColor), 0, PenStyleOf(GridStyle)));
    const int width = Buffer.width();
    const int height = Buffer.height();
    // Positions are single precision and accumulate: x is never recomputed as k * step.
    for (float x = 0.0f; x < static_cast<float>(width); x = static_cast<float>(x + Step)) {
        const int px = static_cast<int>(RoundHalfEven(x));
        painter.drawLine(px, 0, px, height - 1);
    }
    for (float y = 0.0f; y < static_cast<float>(height); y = static_cast<float>(y + Step)) {
        const int py = static_cast<int>(RoundHalfEven(y));
        painter.drawLine(0, py, width - 1, py);
    }
}

std::int32_t CanvasGrid::SnapOne(std::int32_t Value, double Step)
{
    if (Step == 0.0)
        throw DivisionByZeroError();
    const std::int16_t k = RoundToInt16(Value / Step);
    const double lower = Step * k;
    const double upper = Step + lower;
    if (std::fabs(Value - upper) < std::fabs(Value - lower))
        return RoundToInt32(upper);
    return RoundToInt32(lower);
}

void CanvasGrid::SnapToGrid(std::int32_t& X, std::int32_t& Y, double Step)
{
    // Both first, so that an overflow on Y leaves X as it was.
    const std::int32_t x = SnapOne(X, Step);
    const std::int32_t y = SnapOne(Y, Step);
    X = x;
    Y = y;
}
