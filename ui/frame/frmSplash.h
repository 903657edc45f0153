#pragma once

#include <QWidget>

class PictureStrip;
class QLabel;

// The window shown while the program starts: the product and its version in two
// labels, a status line and a progress bar drawn from a strip of pictures.
class frmSplash : public QWidget
{
    Q_OBJECT
public:
    explicit frmSplash(QWidget* parent = nullptr);

    // Shows Status and moves the bar to Step of Steps, painting at once.
    void Progress(const QString& Status, int Step, int Steps);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QLabel* m_status;
    PictureStrip* m_progress;
};
