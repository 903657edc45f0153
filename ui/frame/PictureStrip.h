#pragma once

#include <QPixmap>
#include <QWidget>

// A progress bar drawn from a strip of pictures: cell k of the bar shows picture k of
// the strip (cycled), the cells up to the current value lit, the rest faded.
class PictureStrip : public QWidget
{
    Q_OBJECT
public:
    explicit PictureStrip(QWidget* parent = nullptr);

    void SetMaximum(int Maximum);
    void SetValue(int Value);
    int Value() const { return m_value; }
    int Maximum() const { return m_maximum; }
    QSize sizeHint() const override;

    // The strip: Count square pictures of Side pixels side by side, painted here for a
    // screen of Ratio device pixels per pixel.
    static QPixmap MakeStrip(int Count, int Side, qreal Ratio = 1.0);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPixmap m_strip;
    int m_frames;
    int m_maximum = 10;
    int m_value = 0;
};
