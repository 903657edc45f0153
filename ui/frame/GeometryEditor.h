#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <functional>

class ModalUi;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTableWidget;
class ShapeCanvas;

// The top shape's geometry as numbers in picture pixels, below the shapes list: a
// rectangle's left, top, width and height, a circle's centre and radius, or a
// polygon's vertices with rows to insert and delete. Enter applies; refused input is
// explained and leaves the shape as it was. A field left without Enter applies too, and
// quietly goes back when its value is refused.
class GeometryEditor : public QWidget
{
    Q_OBJECT
public:
    explicit GeometryEditor(ModalUi& Ui, QWidget* parent = nullptr);

    // Shows the top shape of Map (nothing for null or an empty map).
    void Load(ShapeCanvas* Map);
    // Applies what is typed; false (after telling the user) when it was refused.
    bool Apply();
    void InsertVertex();
    void DeleteVertex();

protected:
    // Undo and Redo in a field with nothing typed go to the map, not to the field.
    bool eventFilter(QObject* Watched, QEvent* Event) override;

private:
    ModalUi& m_ui;
    QPointer<ShapeCanvas> m_map;
    std::int16_t m_index = -1;
    bool m_loading = false;
    QLabel* m_caption;
    QStackedWidget* m_pages;
    QLabel* m_labels[4];
    QLineEdit* m_fields[4];
    QTableWidget* m_vertices;
    QPushButton* m_insert;
    QPushButton* m_delete;

    QWidget* BuildFields();
    QWidget* BuildVertices();
    bool Run(const std::function<QString()>& Change, bool Quiet = false);
    bool ApplyFields(bool Quiet);
};
