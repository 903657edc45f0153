#pragma once

#include <QDialog>

class ModalUi;
class QLineEdit;
class ShapeCanvas;

// The size at which the map's picture is shown, on the canvas and on the web page.
class ImageSize : public QDialog
{
    Q_OBJECT
public:
    ImageSize(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Applies the typed size at 100 per cent and closes, or says why not and stays.
    void Ok();
    void About();

private:
    ShapeCanvas& m_map;
    ModalUi& m_ui;
    QLineEdit* m_width;
    QLineEdit* m_height;
};
