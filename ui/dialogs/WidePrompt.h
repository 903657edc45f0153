#pragma once

#include <QInputDialog>

// The one-line prompt, wide enough to show its whole default text (a long address, say)
// without scrolling, up to most of the screen's width.
class WidePrompt : public QInputDialog
{
    Q_OBJECT
public:
    WidePrompt(const QString& Label, const QString& Title, const QString& Text,
               QWidget* parent = nullptr);
};
