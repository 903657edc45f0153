#pragma once

#include "core/forms/OptionsModel.h"
#include "core/forms/TabWindow.h"

#include <QDialog>

class ModalUi;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QTabBar;
class QWidget;
class ShapeCanvas;

// "Properties": the map's, every shape's and the default area's properties on tabs.
// Edits a private copy (OptionsModel); OK writes it to the map, Cancel drops it.
class frmOptions : public QDialog
{
    Q_OBJECT
public:
    frmOptions(ShapeCanvas& map, ModalUi& ui, QWidget* parent = nullptr);

    // Builds the tabs for the map's shapes, loads the copy and opens tab TheIndex
    // (1 the map, 2.. the shapes, last the default area; -1 counts as 1).
    void OpenOnTab(int TheIndex);
    OptionsModel& Model() { return m_model; }

public slots:
    void reject() override;

private:
    ShapeCanvas& m_map;
    ModalUi& m_ui;
    OptionsModel m_model;
    bool m_closedByButton = false;

    QTabBar* m_tabs;
    // The tabs the strip holds: all of them, or a run around the current one.
    TabWindow m_window{2};
    QWidget* m_mapGroup;
    QWidget* m_shapeGroup;
    QLineEdit* m_mapName;
    QComboBox* m_style;
    QComboBox* m_onClick;
    QButtonGroup* m_border;
    QLineEdit* m_url;
    QLineEdit* m_comment;
    QLineEdit* m_target;
    QLineEdit* m_status;
    QLineEdit* m_alert;
    QCheckBox* m_alertOn;

    QWidget* BuildMapGroup();
    QWidget* BuildShapeGroup();
    QLineEdit* TextBox(const char* Name, OptionsModel::Field TheField);
    // Puts the held tabs in the strip with Current selected, quietly.
    void FillTabs(int Current);
    void OnTabChanged(int StripIndex);
    void ShowPage(int Tab);
    void ShowMapFields();
    void Ok();
    void Cancel();
};
