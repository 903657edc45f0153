#pragma once

#include <QImage>
#include <QWidget>

// The hidden buffer HoldImage: the loaded picture stretched to the zoomed size, with
// the grid drawn into it; the drawing surface shows it as its background.
class PictureBuffer : public QWidget
{
    Q_OBJECT
public:
    explicit PictureBuffer(QWidget* parent = nullptr);

    // A new, white buffer of Width x Height pixels.
    void ResizeBuffer(int Width, int Height);
    // Stretches Picture over the whole buffer.
    void StretchFrom(const QImage& Picture);
    QImage& Image() { return m_image; }
    const QImage& Image() const { return m_image; }

private:
    QImage m_image;
};
