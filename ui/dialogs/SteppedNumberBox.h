#pragma once

#include "core/forms/SteppedNumberEntry.h"

#include <QObject>

class QLineEdit;
class QScrollBar;

// Keeps a digits-only box and its scroll bar in step: typing an in-range number moves
// the bar, moving the bar rewrites the text, and leaving the box corrects a text that
// is out of range.
class SteppedNumberBox : public QObject
{
    Q_OBJECT
public:
    SteppedNumberBox(QLineEdit& Box, QScrollBar& Bar, int Minimum, int Maximum);

    // Shows Text in the box and, when in range, on the bar.
    void SetText(const QString& Text);
    // What leaving the box does; also run before the dialog uses the text.
    void Correct();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void TextChanged(const QString& Text);
    void BarChanged(int Value);

    QLineEdit& m_box;
    QScrollBar& m_bar;
    SteppedNumberEntry m_entry;
};
