#include "ui/tools/MapCheckWindow.h"

#include "core/interchange/MapCheck.h"
#include "core/interchange/MapFindingsModel.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

MapCheckWindow::MapCheckWindow(QWidget* parent)
    : QDialog(parent), m_model(new MapFindingsModel(this)), m_list(new QTreeView(this)),
      m_summary(new QLabel(this))
{
    setObjectName(QStringLiteral("MapCheckWindow"));
    setWindowTitle(QStringLiteral("Check Map"));
    setModal(false);

    m_summary->setObjectName(QStringLiteral("lblSummary"));
    m_list->setObjectName(QStringLiteral("lstFindings"));
    m_list->setModel(m_model);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->header()->setStretchLastSection(true);
    m_list->setColumnWidth(0, 110);
    m_list->setColumnWidth(1, 70);
    // activated: a double click, or Enter on the current row.
    connect(m_list, &QTreeView::activated, this,
            [this](const QModelIndex& index) { ShowShapeOf(index.row()); });

    auto* again = new QPushButton(QStringLiteral("Check &Again"), this);
    again->setObjectName(QStringLiteral("btnCheckAgain"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("btnClose"));
    for (QPushButton* button : {again, close})
        button->setAutoDefault(false);
    connect(again, &QPushButton::clicked, this, &MapCheckWindow::CheckAgain);
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_summary, 1);
    buttons->addWidget(again);
    buttons->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    resize(640, 360);
    DialogPlacement::CentreOnScreen(*this);
}

MapCheckWindow* MapCheckWindow::ShowFor(QWidget& Frame, ShapeCanvas* Map)
{
    if (Map == nullptr)
        return nullptr;
    auto* window = Frame.findChild<MapCheckWindow*>(QString(), Qt::FindDirectChildrenOnly);
    if (window == nullptr)
        window = new MapCheckWindow(&Frame);
    window->Check(*Map);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void MapCheckWindow::Check(ShapeCanvas& Map)
{
    m_map = &Map;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_model->SetFindings(MapCheck::Check(Map.Document()));
    QGuiApplication::restoreOverrideCursor();

    const int count = m_model->rowCount();
    const QString name = Map.windowTitle().isEmpty() ? Map.Document().MapName : Map.windowTitle();
    m_summary->setText(count == 0   ? QStringLiteral("%1: no problems found.").arg(name)
                       : count == 1 ? QStringLiteral("%1: 1 finding.").arg(name)
                                    : QStringLiteral("%1: %2 findings.").arg(name).arg(count));
    if (count > 0)
        m_list->setCurrentIndex(m_model->index(0, 0));
}

void MapCheckWindow::CheckAgain()
{
    if (m_map)
        Check(*m_map);
}

bool MapCheckWindow::ShowShapeOf(int Row)
{
    const int shape = m_model->ShapeAt(Row);
    if (!m_map || shape < 0 || shape > m_map->Document().ItemCount())
        return false;
    if (auto* window = qobject_cast<QMdiSubWindow*>(m_map->parentWidget())) {
        if (QMdiArea* area = window->mdiArea())
            area->setActiveSubWindow(window);
    }
    // As the Shapes list chooses one: on top, grabbed, scrolled into view, one undo step.
    m_map->SelectShape(static_cast<std::int16_t>(shape));
    return true;
}
