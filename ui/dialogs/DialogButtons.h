#pragma once

class QDialog;
class QHBoxLayout;
class QPushButton;

// The right-aligned OK / Cancel row of a small dialog.
class DialogButtons
{
public:
    // OK (Command1, the default button) and Cancel (Command2, rejecting the dialog);
    // the caller connects OK to its own check.
    static QHBoxLayout* OkCancel(QDialog& Dialog, QPushButton*& Ok);
};
