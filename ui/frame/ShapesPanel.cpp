#include "ui/frame/ShapesPanel.h"

#include "core/document/ShapeListModel.h"
#include "ui/canvas/CanvasSurface.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/frame/GeometryEditor.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QShortcut>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

ShapesPanel::ShapesPanel(ModalUi& Ui, QWidget* parent)
    : QDockWidget(QStringLiteral("Shapes"), parent), m_model(new ShapeListModel(this)),
      m_filterText(new QLineEdit), m_list(new QTableView), m_geometry(new GeometryEditor(Ui))
{
    setObjectName(QStringLiteral("ShapesDock"));
    // Edits in the list are undo steps of the map they change.
    m_model->SetEditRunner(
        [this](const QString& Name, std::int16_t Index, const std::function<void()>& Edit) {
            if (m_map)
                m_map->RecordEdit(Name, {Index}, false, Edit);
        });

    m_filterText->setObjectName(QStringLiteral("ShapeFilter"));
    m_filterText->setPlaceholderText(QStringLiteral("Filter by URL, alt text or target"));
    m_filterText->setClearButtonEnabled(true);
    connect(m_filterText, &QLineEdit::textChanged, this, [this](const QString& text) {
        m_model->SetFilter(text);
        SyncSelection();
    });

    m_list->setObjectName(QStringLiteral("ShapeList"));
    m_list->setModel(m_model);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                            QAbstractItemView::AnyKeyPressed);
    m_list->verticalHeader()->hide();
    // Fixed row heights: nothing is measured per row, whatever the number of shapes.
    m_list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_list->verticalHeader()->setDefaultSectionSize(m_list->fontMetrics().height() + 6);
    m_list->horizontalHeader()->setStretchLastSection(true);
    // Number and type are short: size them by their longest text so the URL shows.
    const QFontMetrics metrics = m_list->fontMetrics();
    m_list->horizontalHeader()->resizeSection(
        ShapeListModel::Number, metrics.horizontalAdvance(QStringLiteral("Shape #32768")) + 12);
    m_list->horizontalHeader()->resizeSection(
        ShapeListModel::Type, metrics.horizontalAdvance(QStringLiteral("Rectangle")) + 12);
    m_list->setWordWrap(false);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& selected) { OnRowChosen(selected); });
    auto* remove =
        new QShortcut(QKeySequence::Delete, m_list, nullptr, nullptr, Qt::WidgetShortcut);
    connect(remove, &QShortcut::activated, this, &ShapesPanel::DeleteChosen);
    // The map keeps Tab for its shapes, so the keyboard needs another way out of it.
    auto* pane = new QShortcut(QKeySequence(Qt::Key_F6), parent != nullptr ? parent : this);
    connect(pane, &QShortcut::activated, this, &ShapesPanel::SwitchPane);

    auto* top = new QWidget;
    auto* topLayout = new QVBoxLayout(top);
    topLayout->setContentsMargins(4, 4, 4, 0);
    topLayout->addWidget(m_filterText);
    topLayout->addWidget(m_list);
    auto* bottom = new QWidget;
    auto* bottomLayout = new QVBoxLayout(bottom);
    bottomLayout->setContentsMargins(4, 0, 4, 4);
    bottomLayout->addWidget(m_geometry);
    auto* splitter = new QSplitter(Qt::Vertical);
    splitter->addWidget(top);
    splitter->addWidget(bottom);
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    setWidget(splitter);
}

void ShapesPanel::SetMap(ShapeCanvas* Map)
{
    if (Map == m_map && (Map != nullptr || m_model->Document() == nullptr))
        return;
    disconnect(m_changed);
    disconnect(m_destroyed);
    m_map = Map;
    m_model->SetDocument(Map == nullptr ? nullptr : &Map->Document());
    if (Map != nullptr) {
        m_changed = connect(Map, &ShapeCanvas::MapChanged, this, &ShapesPanel::OnMapChanged);
        // QPointer is already null in destroyed(): the model must let go here too.
        m_destroyed = connect(Map, &QObject::destroyed, this, [this] {
            m_model->SetDocument(nullptr);
            m_geometry->Load(nullptr);
        });
    }
    m_geometry->Load(Map);
    SyncSelection();
}

void ShapesPanel::OnMapChanged(bool Everything)
{
    m_model->Refresh(Everything);
    m_geometry->Load(m_map);
    SyncSelection();
}

void ShapesPanel::OnRowChosen(const QItemSelection& Selected)
{
    if (m_syncing || !m_map || Selected.indexes().isEmpty())
        return;
    const std::int16_t shape = m_model->ShapeAt(Selected.indexes().first().row());
    if (shape >= 0)
        m_map->SelectShape(shape);
}

void ShapesPanel::DeleteChosen()
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (!m_map || rows.size() != 1)
        return;
    // A chosen row is the top shape, which is what the map deletes.
    const std::int16_t shape = m_model->ShapeAt(rows.first().row());
    const MapDocument& doc = m_map->Document();
    if (shape < 0 || doc.ItemCount() < 0 || doc.PolygonInProgress ||
        doc.ShapeOrder().front() != shape)
        return;
    m_map->DeleteShape();
}

void ShapesPanel::SwitchPane()
{
    if (isAncestorOf(QApplication::focusWidget())) {
        if (m_map)
            m_map->Surface().setFocus(Qt::ShortcutFocusReason);
        return;
    }
    show();
    raise();
    m_list->setFocus(Qt::ShortcutFocusReason);
}

void ShapesPanel::SyncSelection()
{
    const MapDocument* doc = m_model->Document();
    m_syncing = true;
    if (doc == nullptr || doc->ItemCount() < 0 || doc->PolygonInProgress) {
        m_list->clearSelection();
    } else {
        const QModelIndex row = m_model->index(m_model->RowOf(doc->ShapeOrder().front()), 0);
        if (!row.isValid()) {
            m_list->clearSelection();
        } else if (m_list->currentIndex().row() != row.row() ||
                   !m_list->selectionModel()->isRowSelected(row.row(), QModelIndex())) {
            m_list->selectionModel()->setCurrentIndex(row, QItemSelectionModel::ClearAndSelect |
                                                               QItemSelectionModel::Rows);
            m_list->scrollTo(row);
        }
    }
    m_syncing = false;
}
