#pragma once

#include "core/forms/MapColorEditor.h"

#include <QDialog>

class ModalUi;
class QFrame;
class QRadioButton;
class QScrollBar;
class ShapeCanvas;

// "Pick A Color": the map's focus, normal and border colours, applied as they change.
class ColorPicker : public QDialog
{
    Q_OBJECT
public:
    ColorPicker(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    void Reset();
    void About();

private:
    void Choose(MapColorEditor::Which Colour);
    void ScrollChanged();
    // Moves the bars to Colour without applying it, and paints the preview.
    void ShowColour(std::int32_t Colour);
    void PaintPreview(std::int32_t Colour);

    ModalUi& m_ui;
    MapColorEditor m_editor;
    QScrollBar* m_red;
    QScrollBar* m_green;
    QScrollBar* m_blue;
    QFrame* m_preview;
};
