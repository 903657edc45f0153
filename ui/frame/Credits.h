#pragma once

#include <QDialog>

// Who made the program, on three tabs.
class Credits : public QDialog
{
    Q_OBJECT
public:
    explicit Credits(QWidget* parent = nullptr);
};
