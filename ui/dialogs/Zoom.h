#pragma once

#include <QDialog>

class ModalUi;
class QLineEdit;
class QScrollBar;
class ShapeCanvas;
class SteppedNumberBox;

// A zoom level for the map typed or scrolled in per cent, 100 to 200.
class Zoom : public QDialog
{
    Q_OBJECT
public:
    Zoom(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Zooms to the typed percentage rounded to tens and closes, or says the picture
    // would grow too big and stays.
    void Ok();

private:
    ShapeCanvas& m_map;
    ModalUi& m_ui;
    QLineEdit* m_percent;
    QScrollBar* m_bar;
    SteppedNumberBox* m_box;
};
