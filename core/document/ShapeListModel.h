#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <functional>
#include <vector>

class MapDocument;
class PatShape;

// The shapes of one map as a table: "Shape #n", type, URL, alt text, target and the
// bounding box in picture pixels. URL, alt text and target are edited in place. A
// filter keeps the shapes whose URL, alt text or target contains its text (any case).
// Nothing is stored per shape but the filtered numbers, so a map of 32,767 shapes
// costs what the visible rows cost.
class ShapeListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { Number, Type, Url, Alt, Target, Left, Top, Width, Height, ColumnCount };

    explicit ShapeListModel(QObject* parent = nullptr);

    // The document shown; null shows nothing. The model never outlives it: the owner
    // sets null first.
    void SetDocument(MapDocument* Document);
    MapDocument* Document() const { return m_document; }
    // After the document changed: a different number of shapes resets the model;
    // otherwise Everything marks every row changed, else only the rows of the top
    // and the current shape (what a mouse or key edit can touch).
    void Refresh(bool Everything);

    void SetFilter(const QString& Text);
    QString Filter() const { return m_filter; }
    // The shape a row shows (-1 for a row the view still has whose shape is gone), and
    // the row showing a shape (-1 when filtered out).
    std::int16_t ShapeAt(int Row) const;
    int RowOf(std::int16_t Shape) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

    static QString TypeName(std::int16_t ShapeType);

    // Runs an edit made here (Name: what the user did) on the shape Index; the window
    // that owns the map passes them through its undo history. By default the edit
    // simply runs.
    using EditRunner = std::function<void(const QString& Name, std::int16_t Index,
                                          const std::function<void()>& Edit)>;
    void SetEditRunner(EditRunner Runner) { m_runEdit = std::move(Runner); }

signals:
    // A shape's URL, alt text or target was edited here.
    void ShapeEdited(std::int16_t Index);

private:
    MapDocument* m_document = nullptr;
    EditRunner m_runEdit;
    int m_rows = 0;
    int m_count = 0;
    QString m_filter;
    // With a filter: the shapes that pass it, in number order.
    std::vector<std::int16_t> m_shown;
    std::int16_t m_lastTop = -1;
    std::int16_t m_lastCurrent = -1;

    void ChangedShape(std::int16_t Index);
    bool Passes(const PatShape& Shape) const;
    // Counts the rows again; callers wrap it in a model reset.
    void Recount();
};
