#include "core/document/ShapeListModel.h"

#include "core/base/Numeric.h"
#include "core/document/MapDocument.h"

#include <algorithm>

ShapeListModel::ShapeListModel(QObject* parent) : QAbstractTableModel(parent) {}

void ShapeListModel::SetDocument(MapDocument* Document)
{
    beginResetModel();
    m_document = Document;
    m_lastTop = -1;
    m_lastCurrent = -1;
    Recount();
    endResetModel();
}

void ShapeListModel::SetFilter(const QString& Text)
{
    if (Text == m_filter)
        return;
    beginResetModel();
    m_filter = Text;
    Recount();
    endResetModel();
}

bool ShapeListModel::Passes(const PatShape& Shape) const
{
    return Shape.URL.contains(m_filter, Qt::CaseInsensitive) ||
           Shape.Comment.contains(m_filter, Qt::CaseInsensitive) ||
           Shape.Target.contains(m_filter, Qt::CaseInsensitive);
}

void ShapeListModel::Recount()
{
    m_shown.clear();
    m_count = m_document == nullptr ? 0 : m_document->ItemCount() + 1;
    if (m_filter.isEmpty()) {
        m_rows = m_count;
        return;
    }
    for (int i = 0; i < m_count; ++i) {
        if (Passes(m_document->Shape(static_cast<std::int16_t>(i))))
            m_shown.push_back(static_cast<std::int16_t>(i));
    }
    m_rows = static_cast<int>(m_shown.size());
}

std::int16_t ShapeListModel::ShapeAt(int Row) const
{
    if (Row < 0 || Row >= m_rows)
        return -1;
    const std::int16_t shape = m_filter.isEmpty() ? static_cast<std::int16_t>(Row)
                                                  : m_shown[static_cast<std::size_t>(Row)];
    return shape <= m_document->ItemCount() ? shape : -1;
}

int ShapeListModel::RowOf(std::int16_t Shape) const
{
    if (m_filter.isEmpty())
        return Shape >= 0 && Shape < m_rows ? Shape : -1;
    const auto found = std::lower_bound(m_shown.begin(), m_shown.end(), Shape);
    return found != m_shown.end() && *found == Shape ? static_cast<int>(found - m_shown.begin())
                                                     : -1;
}

void ShapeListModel::Refresh(bool Everything)
{
    if (m_document == nullptr)
        return;
    // Shapes came or went (numbers shift), or a change of the whole map may have
    // changed what passes the filter.
    if (m_document->ItemCount() + 1 != m_count || (Everything && !m_filter.isEmpty())) {
        SetDocument(m_document);
        return;
    }
    if (m_rows == 0)
        return;
    if (Everything) {
        emit dataChanged(index(0, 0), index(m_rows - 1, ColumnCount - 1));
        return;
    }
    const std::int16_t top = m_document->ShapeOrder().front();
    const std::int16_t current = m_document->CurrentShape;
    for (const std::int16_t shape : {m_lastTop, m_lastCurrent, top, current})
        ChangedShape(shape);
    m_lastTop = top;
    m_lastCurrent = current;
}

void ShapeListModel::ChangedShape(std::int16_t Index)
{
    const int row = RowOf(Index);
    if (row >= 0)
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

int ShapeListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int ShapeListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QString ShapeListModel::TypeName(std::int16_t ShapeType)
{
    switch (ShapeType) {
    case Circle:
        return QStringLiteral("Circle");
    case Rectangle:
        return QStringLiteral("Rectangle");
    default:
        return QStringLiteral("Polygon");
    }
}

QVariant ShapeListModel::data(const QModelIndex& index, int role) const
{
    if (m_document == nullptr || !index.isValid() || index.row() >= m_rows)
        return QVariant();
    if (role != Qt::DisplayRole && role != Qt::EditRole && role != Qt::TextAlignmentRole)
        return QVariant();
    const std::int16_t number = ShapeAt(index.row());
    if (number < 0)
        return QVariant();
    const PatShape& shape = m_document->Shape(number);
    if (role == Qt::TextAlignmentRole) {
        if (index.column() >= Left)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        return QVariant();
    }
    if (index.column() >= Left && shape.Points().empty())
        return QVariant();
    // The box in picture pixels, as the status bar and the HTML give them.
    const auto picture = [&](std::int32_t v) {
        const double zoom = shape.Zoom() != 0.0 ? shape.Zoom() : 1.0;
        return RoundToInt32(v / zoom);
    };
    switch (index.column()) {
    case Number:
        return QStringLiteral("Shape #%1").arg(number + 1);
    case Type:
        return TypeName(shape.GetShapeType());
    case Url:
        return shape.URL;
    case Alt:
        return shape.Comment;
    case Target:
        return shape.Target;
    default:
        break;
    }
    const ShapeRect b = PatShape::BoundingRect(shape.Points(), false);
    switch (index.column()) {
    case Left:
        return picture(b.left);
    case Top:
        return picture(b.top);
    case Width:
        return picture(b.right) - picture(b.left);
    case Height:
        return picture(b.bottom) - picture(b.top);
    default:
        return QVariant();
    }
}

QVariant ShapeListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char* const names[] = {"Shape", "Type", "URL",   "Alt Text", "Target",
                                        "Left",  "Top",  "Width", "Height"};
    if (section < 0 || section >= ColumnCount)
        return QVariant();
    return QString::fromLatin1(names[section]);
}

Qt::ItemFlags ShapeListModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = QAbstractTableModel::flags(index);
    if (index.isValid() &&
        (index.column() == Url || index.column() == Alt || index.column() == Target))
        f |= Qt::ItemIsEditable;
    return f;
}

bool ShapeListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (m_document == nullptr || !index.isValid() || role != Qt::EditRole || index.row() >= m_rows)
        return false;
    const std::int16_t row = ShapeAt(index.row());
    if (row < 0)
        return false;
    const QString text = value.toString();
    QString name;
    std::function<void()> edit;
    switch (index.column()) {
    case Url:
        name = QStringLiteral("Edit URL");
        edit = [this, row, text] { m_document->SetURL(row, text); };
        break;
    case Alt:
        name = QStringLiteral("Edit Alt Text");
        edit = [this, row, text] { m_document->SetComment(row, text); };
        break;
    case Target:
        name = QStringLiteral("Edit Target");
        edit = [this, row, text] { m_document->SetTarget(row, text); };
        break;
    default:
        return false;
    }
    if (m_runEdit)
        m_runEdit(name, row, edit);
    else
        edit();
    emit dataChanged(index, index);
    emit ShapeEdited(row);
    return true;
}
