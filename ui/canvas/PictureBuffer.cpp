#include "ui/canvas/PictureBuffer.h"

#include <QPainter>

PictureBuffer::PictureBuffer(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("HoldImage"));
    setVisible(false);
}

void PictureBuffer::ResizeBuffer(int Width, int Height)
{
    resize(std::max(Width, 0), std::max(Height, 0));
    if (Width <= 0 || Height <= 0) {
        m_image = QImage();
        return;
    }
    m_image = QImage(Width, Height, QImage::Format_RGB32);
    m_image.fill(Qt::white);
}

void PictureBuffer::StretchFrom(const QImage& Picture)
{
    if (m_image.isNull())
        return;
    m_image.fill(Qt::white);
    if (Picture.isNull())
        return;
    QPainter painter(&m_image);
    // Enlarged pictures keep their pixels sharp, which is what precise editing needs;
    // reduced ones are smoothed.
    const bool reducing = m_image.width() < Picture.width() || m_image.height() < Picture.height();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, reducing);
    painter.drawImage(m_image.rect(), Picture);
}
