#include "ui/dialogs/SteppedNumberBox.h"

#include "ui/dialogs/DigitsOnly.h"

#include <QEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>

SteppedNumberBox::SteppedNumberBox(QLineEdit& Box, QScrollBar& Bar, int Minimum, int Maximum)
    : QObject(&Box), m_box(Box), m_bar(Bar), m_entry(Minimum, Maximum)
{
    DigitsOnly::Apply(m_box);
    m_bar.setRange(Minimum, Maximum);
    m_box.installEventFilter(this);
    connect(&m_box, &QLineEdit::textChanged, this, &SteppedNumberBox::TextChanged);
    connect(&m_bar, &QScrollBar::valueChanged, this, &SteppedNumberBox::BarChanged);
}

void SteppedNumberBox::SetText(const QString& Text)
{
    m_box.setText(Text);
}

void SteppedNumberBox::Correct()
{
    const QString corrected = m_entry.TextOnLeave(m_box.text(), m_bar.value());
    if (corrected != m_box.text())
        m_box.setText(corrected);
}

bool SteppedNumberBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_box && event->type() == QEvent::FocusOut)
        Correct();
    return QObject::eventFilter(watched, event);
}

void SteppedNumberBox::TextChanged(const QString& Text)
{
    if (const std::optional<int> value = m_entry.ScrollValueFor(Text)) {
        // The text stays as typed while the bar follows it.
        const QSignalBlocker blocker(&m_bar);
        m_bar.setValue(*value);
    }
}

void SteppedNumberBox::BarChanged(int Value)
{
    m_box.setText(SteppedNumberEntry::TextFor(Value));
}
