#pragma once

#include <QDialog>

class ModalUi;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QScrollBar;
class ShapeCanvas;
class SteppedNumberBox;

// The grid options of a map: colour, style, spacing, display and snapping.
class GridForm : public QDialog
{
    Q_OBJECT
public:
    GridForm(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Stores every field in the map and redraws its grid.
    void Ok();

private:
    ShapeCanvas& m_map;
    ModalUi& m_ui;
    QComboBox* m_colors;
    QComboBox* m_styles;
    QLineEdit* m_spacing;
    QScrollBar* m_spacingBar;
    SteppedNumberBox* m_spacingBox;
    QCheckBox* m_display;
    QCheckBox* m_snap;
};
