#include "ui/frame/PictureStrip.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int Side = 16;
constexpr int Frames = 8;

} // namespace

PictureStrip::PictureStrip(QWidget* parent)
    : QWidget(parent), m_strip(MakeStrip(Frames, Side)), m_frames(Frames)
{
    setObjectName(QStringLiteral("ProgressStrip"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QPixmap PictureStrip::MakeStrip(int Count, int CellSide, qreal Ratio)
{
    QPixmap strip(QSize(Count * CellSide, CellSide) * Ratio);
    strip.setDevicePixelRatio(Ratio);
    strip.fill(Qt::transparent);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing);
    for (int k = 0; k < Count; ++k) {
        // Each picture is one of the program's shapes, in a hue running from the
        // focus blue towards green.
        const QColor fill = QColor::fromHsv(200 - k * 80 / qMax(1, Count - 1), 200, 210);
        const QRectF cell(k * CellSide + 2.5, 2.5, CellSide - 5.0, CellSide - 5.0);
        p.setPen(QPen(fill.darker(160), 1.2));
        p.setBrush(fill);
        switch (k % 3) {
        case 0:
            p.drawRect(cell);
            break;
        case 1:
            p.drawEllipse(cell);
            break;
        default: {
            QPainterPath star;
            star.moveTo(cell.center().x(), cell.top());
            star.lineTo(cell.right(), cell.center().y() + 1);
            star.lineTo(cell.center().x() + 2, cell.bottom());
            star.lineTo(cell.left(), cell.bottom() - 2);
            star.lineTo(cell.left() + 1, cell.top() + 3);
            star.closeSubpath();
            p.drawPath(star);
        }
        }
    }
    return strip;
}

void PictureStrip::SetMaximum(int Maximum)
{
    m_maximum = qMax(1, Maximum);
    m_value = qMin(m_value, m_maximum);
    update();
}

void PictureStrip::SetValue(int Value)
{
    m_value = qBound(0, Value, m_maximum);
    update();
}

QSize PictureStrip::sizeHint() const
{
    return {m_maximum * (Side + 2) + 6, Side + 6};
}

void PictureStrip::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setPen(palette().color(QPalette::Mid));
    p.setBrush(palette().color(QPalette::Base));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
    const int cells = m_maximum;
    const double step = double(width() - 6) / cells;
    // Drawn again for the screen's pixels, so the pictures stay sharp at any scale.
    const qreal ratio = devicePixelRatioF();
    if (m_strip.devicePixelRatio() != ratio)
        m_strip = MakeStrip(m_frames, Side, ratio);
    for (int k = 0; k < cells; ++k) {
        const QRect target(3 + int(k * step + (step - Side) / 2), (height() - Side) / 2, Side,
                           Side);
        p.setOpacity(k < m_value ? 1.0 : 0.15);
        p.drawPixmap(QRectF(target), m_strip,
                     QRectF((k % m_frames) * Side * ratio, 0, Side * ratio, Side * ratio));
    }
}
