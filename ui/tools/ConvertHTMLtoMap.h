#pragma once

#include <QDialog>

class ModalUi;
class QCheckBox;
class QPlainTextEdit;
class ShapeCanvas;

// "Convert HTML to Map": pasted map code becomes the map's shapes.
class ConvertHTMLtoMap : public QDialog
{
    Q_OBJECT
public:
    ConvertHTMLtoMap(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Converts the pasted code; closes the dialog on success, stays open otherwise.
    void Generate();
    void Warning();
    static QString WarningText();

private:
    ShapeCanvas& m_map;
    ModalUi& m_ui;
    QPlainTextEdit* m_text;
    QCheckBox* m_keepText;
    QCheckBox* m_add;
};
