#pragma once

#include <QDialog>

class ModalUi;
class QRadioButton;

// "Vantrel": the first question of a run, a new map or an existing one. OK closes the
// dialog and the frame then does what was chosen; Help opens the manual and stays.
class StartUp : public QDialog
{
    Q_OBJECT
public:
    explicit StartUp(ModalUi& ui, QWidget* parent = nullptr);

    // True when "Start a new image map." is selected.
    bool NewMapChosen() const;

private:
    void Help();

    ModalUi& m_ui;
    QRadioButton* m_newMap;
};
