#include "ui/frame/GeometryEditor.h"

#include "core/base/ModalUi.h"
#include "core/document/ShapeListModel.h"
#include "core/forms/GeometryForm.h"
#include "ui/canvas/ShapeCanvas.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <exception>

GeometryEditor::GeometryEditor(ModalUi& Ui, QWidget* parent)
    : QWidget(parent), m_ui(Ui), m_caption(new QLabel), m_pages(new QStackedWidget)
{
    setObjectName(QStringLiteral("ShapeGeometry"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_caption->setObjectName(QStringLiteral("GeometryCaption"));
    layout->addWidget(m_caption);
    m_pages->addWidget(new QWidget);
    m_pages->addWidget(BuildFields());
    m_pages->addWidget(BuildVertices());
    layout->addWidget(m_pages);
    Load(nullptr);
}

QWidget* GeometryEditor::BuildFields()
{
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    form->setContentsMargins(0, 0, 0, 0);
    static const char* const names[] = {"GeometryField1", "GeometryField2", "GeometryField3",
                                        "GeometryField4"};
    for (int i = 0; i < 4; ++i) {
        m_labels[i] = new QLabel;
        m_fields[i] = new QLineEdit;
        m_fields[i]->setObjectName(QString::fromLatin1(names[i]));
        m_labels[i]->setBuddy(m_fields[i]);
        m_fields[i]->installEventFilter(this);
        connect(m_fields[i], &QLineEdit::returnPressed, this, &GeometryEditor::Apply);
        // Typed and left for the picture or another field: kept as Enter would keep it,
        // without a message that would interrupt the click that took the focus away.
        connect(m_fields[i], &QLineEdit::editingFinished, this, [this, field = m_fields[i]] {
            if (!field->hasFocus() && field->isModified())
                ApplyFields(true);
        });
        form->addRow(m_labels[i], m_fields[i]);
    }
    return page;
}

QWidget* GeometryEditor::BuildVertices()
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    m_vertices = new QTableWidget(0, 2);
    m_vertices->setObjectName(QStringLiteral("GeometryVertices"));
    m_vertices->setHorizontalHeaderLabels({QStringLiteral("X"), QStringLiteral("Y")});
    m_vertices->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_vertices->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_vertices->setSelectionMode(QAbstractItemView::SingleSelection);
    // A typed cell is applied when the edit ends with Enter.
    connect(m_vertices, &QTableWidget::itemChanged, this, [this] {
        if (!m_loading)
            Apply();
    });
    layout->addWidget(m_vertices);
    auto* buttons = new QHBoxLayout;
    m_insert = new QPushButton(QStringLiteral("&Insert Vertex"));
    m_insert->setObjectName(QStringLiteral("btnInsertVertex"));
    m_delete = new QPushButton(QStringLiteral("&Delete Vertex"));
    m_delete->setObjectName(QStringLiteral("btnDeleteVertex"));
    connect(m_insert, &QPushButton::clicked, this, &GeometryEditor::InsertVertex);
    connect(m_delete, &QPushButton::clicked, this, &GeometryEditor::DeleteVertex);
    // Del on a chosen row does what the button does (a cell being typed in keeps the key).
    connect(new QShortcut(QKeySequence::Delete, m_vertices, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, &GeometryEditor::DeleteVertex);
    buttons->addWidget(m_insert);
    buttons->addWidget(m_delete);
    layout->addLayout(buttons);
    return page;
}

void GeometryEditor::Load(ShapeCanvas* Map)
{
    m_map = Map;
    m_loading = true;
    const MapDocument* doc = Map == nullptr ? nullptr : &Map->Document();
    if (doc == nullptr || doc->ItemCount() < 0 || doc->PolygonInProgress) {
        m_index = -1;
        m_caption->setText(QStringLiteral("No shape selected"));
        m_pages->setCurrentIndex(0);
        m_loading = false;
        return;
    }
    m_index = doc->ShapeOrder().front();
    const std::int16_t type = doc->Shape(m_index).GetShapeType();
    m_caption->setText(
        QStringLiteral("Shape #%1: %2").arg(m_index + 1).arg(ShapeListModel::TypeName(type)));
    if (type == Polygon) {
        const QList<QPoint> vertices = GeometryForm::Vertices(*doc, m_index);
        const int selected = m_vertices->currentRow();
        m_vertices->setRowCount(static_cast<int>(vertices.size()));
        for (int i = 0; i < vertices.size(); ++i) {
            m_vertices->setItem(i, 0, new QTableWidgetItem(QString::number(vertices[i].x())));
            m_vertices->setItem(i, 1, new QTableWidgetItem(QString::number(vertices[i].y())));
        }
        if (selected >= 0 && selected < vertices.size())
            m_vertices->setCurrentCell(selected, 0);
        m_pages->setCurrentIndex(2);
    } else {
        const QStringList captions =
            type == Circle ? QStringList{QStringLiteral("Centre &X:"), QStringLiteral("Centre &Y:"),
                                         QStringLiteral("&Radius:")}
                           : QStringList{QStringLiteral("&Left:"), QStringLiteral("&Top:"),
                                         QStringLiteral("&Width:"), QStringLiteral("&Height:")};
        const QList<int> values = GeometryForm::Fields(*doc, m_index);
        for (int i = 0; i < 4; ++i) {
            const bool used = i < captions.size();
            m_labels[i]->setVisible(used);
            m_fields[i]->setVisible(used);
            m_labels[i]->setText(used ? captions[i] : QString());
            // A field being typed in keeps its text until Enter.
            if (!m_fields[i]->hasFocus() || !m_fields[i]->isModified())
                m_fields[i]->setText(i < values.size() ? QString::number(values[i]) : QString());
            m_fields[i]->setModified(false);
        }
        m_pages->setCurrentIndex(1);
    }
    m_loading = false;
}

bool GeometryEditor::eventFilter(QObject* Watched, QEvent* Event)
{
    if (Event->type() == QEvent::ShortcutOverride) {
        auto* field = qobject_cast<QLineEdit*>(Watched);
        const auto* key = static_cast<QKeyEvent*>(Event);
        // Left unclaimed, the keys reach the frame's Undo and Redo.
        if (field != nullptr && !field->isModified() &&
            (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)))
            return true;
    }
    return QWidget::eventFilter(Watched, Event);
}

bool GeometryEditor::Run(const std::function<QString()>& Change, bool Quiet)
{
    if (!m_map || m_index < 0)
        return false;
    QString refusal;
    try {
        // One undo step; a refused edit changes nothing and leaves none.
        m_map->RecordEdit(QStringLiteral("Edit Geometry"), {m_index}, false,
                          [&] { refusal = Change(); });
    } catch (const std::exception& error) {
        refusal = QString::fromLocal8Bit(error.what());
    }
    if (!refusal.isEmpty()) {
        if (!Quiet)
            m_ui.Message(refusal, ModalUi::Icon::Critical);
        // The fields show the shape as it stayed.
        for (QLineEdit* field : m_fields)
            field->setModified(false);
        Load(m_map);
        return false;
    }
    m_map->NotifyMapChanged(true);
    return true;
}

bool GeometryEditor::Apply()
{
    if (!m_map || m_index < 0 || m_loading)
        return false;
    if (m_pages->currentIndex() == 2) {
        QList<QStringList> rows;
        for (int r = 0; r < m_vertices->rowCount(); ++r) {
            const auto text = [this, r](int c) {
                const QTableWidgetItem* item = m_vertices->item(r, c);
                return item == nullptr ? QString() : item->text();
            };
            rows.append({text(0), text(1)});
        }
        return Run([&] { return GeometryForm::ApplyVertices(m_map->Document(), m_index, rows); });
    }
    return ApplyFields(false);
}

bool GeometryEditor::ApplyFields(bool Quiet)
{
    if (!m_map || m_index < 0 || m_loading || m_pages->currentIndex() != 1)
        return false;
    QStringList texts;
    for (QLineEdit* field : m_fields) {
        if (!field->isHidden())
            texts.append(field->text());
    }
    return Run([&] { return GeometryForm::ApplyFields(m_map->Document(), m_index, texts); }, Quiet);
}

void GeometryEditor::InsertVertex()
{
    if (!m_map || m_index < 0)
        return;
    // Halfway along the edge after the selected vertex (after the last one by default).
    QList<QPoint> vertices = GeometryForm::Vertices(m_map->Document(), m_index);
    const int count = static_cast<int>(vertices.size());
    if (count == 0)
        return;
    const int at = m_vertices->currentRow() >= 0 ? m_vertices->currentRow() : count - 1;
    const QPoint a = vertices[at];
    const QPoint b = vertices[(at + 1) % count];
    vertices.insert(at + 1, (a + b) / 2);
    QList<QStringList> rows;
    for (const QPoint& p : vertices)
        rows.append({QString::number(p.x()), QString::number(p.y())});
    if (Run([&] { return GeometryForm::ApplyVertices(m_map->Document(), m_index, rows); }))
        m_vertices->setCurrentCell(at + 1, 0);
}

void GeometryEditor::DeleteVertex()
{
    if (!m_map || m_index < 0)
        return;
    QList<QPoint> vertices = GeometryForm::Vertices(m_map->Document(), m_index);
    const int at = m_vertices->currentRow();
    if (at < 0 || at >= vertices.size())
        return;
    vertices.removeAt(at);
    QList<QStringList> rows;
    for (const QPoint& p : vertices)
        rows.append({QString::number(p.x()), QString::number(p.y())});
    Run([&] { return GeometryForm::ApplyVertices(m_map->Document(), m_index, rows); });
}
