#include "ui/tools/URLChecker.h"

#include "core/base/ModalUi.h"
#include "core/base/Module1.h"
#include "core/base/Numeric.h"
#include "core/interchange/BrokenLinkFilter.h"
#include "core/interchange/LinkResolver.h"
#include "core/interchange/LinkTableModel.h"
#include "core/interchange/URLHelpPage.h"
#include "ui/canvas/ShapeCanvas.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QTableView>
#include <QUrl>
#include <QVBoxLayout>
#include <QWebEngineView>

using namespace std::chrono_literals;

URLChecker::URLChecker(ShapeCanvas& map, ModalUi& ui, QWidget* parent)
    : QDialog(parent), m_map(map), m_ui(ui), m_list(map.Document()),
      m_links(new LinkTableModel(this)), m_filter(new BrokenLinkFilter(*m_links, this)),
      m_combo(new QComboBox(this)), m_base(new QLineEdit(this)), m_browser(new QWebEngineView(this))
{
    setObjectName(QStringLiteral("URLChecker"));
    setWindowTitle(QStringLiteral("URL Checker"));

    auto* frame = new QGroupBox(QStringLiteral("URL Checker"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    m_combo->setObjectName(QStringLiteral("URLCombo"));
    m_combo->setMinimumContentsLength(24);
    m_combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_combo->installEventFilter(this);
    m_base->setObjectName(QStringLiteral("txtURL"));
    m_base->setMinimumWidth(180);
    m_base->setPlaceholderText(QStringLiteral("https://www.example.com/"));
    m_base->setToolTip(QStringLiteral("Relative links are resolved against this address; "
                                      "without it, against the picture's folder."));
    auto* baseLabel = new QLabel(QStringLiteral("Base URL:"), this);
    baseLabel->setBuddy(m_base);
    m_browser->setObjectName(QStringLiteral("WebBrowser1"));

    auto* check = new QPushButton(QStringLiteral("Check"), this);
    check->setObjectName(QStringLiteral("Command1"));
    check->setDefault(true);
    auto* edit = new QPushButton(QStringLiteral("Edit"), this);
    edit->setObjectName(QStringLiteral("Command4"));
    auto* about = new QPushButton(QStringLiteral("About"), this);
    about->setObjectName(QStringLiteral("Command2"));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("Command3"));
    connect(check, &QPushButton::clicked, this, &URLChecker::Check);
    connect(edit, &QPushButton::clicked, this, &URLChecker::Edit);
    connect(about, &QPushButton::clicked, this, &URLChecker::About);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);

    // The buttons go under the fields, so the checker fits a small or scaled screen.
    auto* rows = new QVBoxLayout(frame);
    auto* fields = new QHBoxLayout;
    fields->addWidget(m_combo, 2);
    fields->addWidget(baseLabel);
    fields->addWidget(m_base, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(check);
    buttons->addWidget(edit);
    buttons->addWidget(about);
    buttons->addWidget(close);
    rows->addLayout(fields);
    rows->addLayout(buttons);

    // The table and the browser share every pixel below the row of controls.
    auto* split = new QSplitter(Qt::Vertical, this);
    split->setObjectName(QStringLiteral("LinkSplitter"));
    split->setChildrenCollapsible(false);
    split->addWidget(CreateTable());
    split->addWidget(m_browser);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 1);
    split->setSizes({320, 280});
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addWidget(split, 1);

    // The base first: the links are then resolved once.
    ApplyBase();
    m_links->SetLinks(m_list.Entries());
    m_baseTyping.setSingleShot(true);
    m_baseTyping.setInterval(400ms);
    connect(&m_baseTyping, &QTimer::timeout, this, &URLChecker::ApplyBase);
    connect(m_base, &QLineEdit::textEdited, &m_baseTyping, qOverload<>(&QTimer::start));
    connect(m_base, &QLineEdit::editingFinished, this, &URLChecker::ApplyBase);

    m_combo->addItems(m_list.Entries());
    m_combo->setCurrentIndex(0);
    // Selecting the first entry counts as a click on the list; it is swallowed, so
    // opening the checker shows the help page rather than entry 0.
    ListClicked();
    connect(m_combo, &QComboBox::activated, this, &URLChecker::ListClicked);
    connect(m_combo, &QComboBox::currentIndexChanged, this, &URLChecker::ComboRowChosen);
    ComboRowChosen(0);

    resize(920, 680);
    DialogPlacement::CentreOnScreen(*this);
    About();
}

URLChecker::~URLChecker()
{
    m_links->Cancel();
}

QWidget* URLChecker::CreateTable()
{
    auto* box = new QWidget(this);
    m_table = new QTableView(box);
    m_table->setObjectName(QStringLiteral("LinkTable"));
    m_table->setModel(m_filter);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    // Fixed row heights keep a table of thousands of links quick to scroll.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    QHeaderView* columns = m_table->horizontalHeader();
    columns->setSectionResizeMode(QHeaderView::Interactive);
    columns->setStretchLastSection(true);
    columns->resizeSection(LinkTableModel::LinkColumn, 100);
    columns->resizeSection(LinkTableModel::UrlColumn, 240);
    columns->resizeSection(LinkTableModel::StatusColumn, 250);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &URLChecker::TableRowChosen);
    connect(m_table, &QTableView::activated, this, &URLChecker::Check);

    m_summary = new QLabel(box);
    m_summary->setObjectName(QStringLiteral("lblSummary"));
    m_summary->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_brokenOnly = new QCheckBox(QStringLiteral("&Broken only"), box);
    m_brokenOnly->setObjectName(QStringLiteral("chkBrokenOnly"));
    m_checkAll = new QPushButton(QStringLiteral("Check &All"), box);
    m_checkAll->setObjectName(QStringLiteral("btnCheckAll"));
    m_checkAll->setToolTip(QStringLiteral("Ask every web address and look for every file (F5)"));
    m_checkAll->setShortcut(QKeySequence(Qt::Key_F5));
    m_checkAll->setAutoDefault(false);
    m_stop = new QPushButton(QStringLiteral("&Stop"), box);
    m_stop->setObjectName(QStringLiteral("btnStop"));
    m_stop->setAutoDefault(false);
    connect(m_checkAll, &QPushButton::clicked, this, &URLChecker::CheckAll);
    connect(m_stop, &QPushButton::clicked, this, &URLChecker::StopChecks);
    connect(m_brokenOnly, &QCheckBox::toggled, m_filter, &BrokenLinkFilter::SetBrokenOnly);

    m_summaryDelay.setSingleShot(true);
    m_summaryDelay.setInterval(150ms);
    connect(&m_summaryDelay, &QTimer::timeout, this, &URLChecker::ShowSummary);
    // Thousands of answers a second would repaint the line thousands of times.
    connect(m_links, &LinkTableModel::SummaryChanged, &m_summaryDelay, [this] {
        if (!m_summaryDelay.isActive())
            m_summaryDelay.start();
    });
    connect(m_links, &LinkTableModel::Finished, this, &URLChecker::ShowSummary);

    auto* bar = new QHBoxLayout;
    bar->addWidget(m_summary, 1);
    bar->addWidget(m_brokenOnly);
    bar->addWidget(m_checkAll);
    bar->addWidget(m_stop);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table, 1);
    layout->addLayout(bar);
    return box;
}

void URLChecker::ListClicked()
{
    if (m_list.TakeClick())
        Check();
}

void URLChecker::Check()
{
    const QString text = m_combo->currentText();
    const LinkResolver resolver(m_base->text(), m_map.Document().ImagePath);
    const ResolvedLink link = resolver.Resolve(text);
    if (link.kind == ResolvedLink::Kind::Empty)
        Navigate(resolver.Base()); // an empty link leads to the page itself
    else if (link.url.isEmpty())
        Navigate(QUrl::fromUserInput(text)); // the browser shows what it makes of it
    else
        Navigate(link.url);
}

void URLChecker::Edit()
{
    const int index = m_combo->currentIndex();
    if (index < 0)
        return;
    const std::optional<QString> answer = m_ui.Prompt(
        QStringLiteral("Changing URL to..."), QStringLiteral("Change URL"), m_combo->currentText());
    if (!answer || answer->isEmpty())
        return;
    // One undo step: the shape's URL, or the default area's with the map's own fields.
    const bool isDefault = m_list.IsDefaultEntry(index);
    std::vector<std::int16_t> shapes;
    if (!isDefault)
        shapes.push_back(ToInt16(index));
    bool edited = false;
    m_map.RecordEdit(QStringLiteral("Edit URL"), shapes, isDefault,
                     [&] { edited = m_list.Edit(index, *answer, m_map.Document()); });
    if (!edited)
        return;
    m_combo->setItemText(index, *answer);
    ApplyBase();
    m_links->SetLink(index, *answer);
    m_links->CheckRow(index);
    UpdateButtons();
}

void URLChecker::About()
{
    const QString path = Module1::WritableProgramFolder() + URLHelpPage::FileName();
    if (!URLHelpPage::Write(path))
        return;
    QCoreApplication::processEvents();
    m_lastAddress = path;
    m_browser->load(QUrl::fromLocalFile(path));
}

void URLChecker::CheckAll()
{
    ApplyBase();
    m_links->CheckAll();
    ShowSummary();
}

void URLChecker::StopChecks()
{
    m_links->Cancel();
    ShowSummary();
}

void URLChecker::Navigate(const QUrl& Address)
{
    m_lastAddress = Address.toString();
    // Whatever the address, the browser shows the outcome itself, error pages included.
    m_browser->load(Address);
}

void URLChecker::ApplyBase()
{
    m_baseTyping.stop();
    const QString base = m_base->text();
    if (m_appliedBase == base)
        return;
    m_appliedBase = base;
    m_links->SetBase(base, m_map.Document().ImagePath);
    ShowSummary();
}

void URLChecker::ShowSummary()
{
    m_summaryDelay.stop();
    m_summary->setText(m_links->Summary());
    UpdateButtons();
}

void URLChecker::UpdateButtons()
{
    const bool checking = m_links->IsChecking();
    m_checkAll->setEnabled(!checking);
    m_stop->setEnabled(checking);
}

void URLChecker::TableRowChosen(const QModelIndex& Current)
{
    const int row = m_filter->mapToSource(Current).row();
    if (row >= 0 && row != m_combo->currentIndex())
        m_combo->setCurrentIndex(row);
}

void URLChecker::ComboRowChosen(int Row)
{
    const QModelIndex current = m_filter->mapFromSource(m_links->index(Row, 0));
    if (!current.isValid() || current.row() == m_table->currentIndex().row())
        return;
    m_table->setCurrentIndex(current);
    m_table->scrollTo(current);
}

void URLChecker::done(int result)
{
    // Nothing keeps asking once the window is gone.
    m_links->Cancel();
    m_list.ResetClicks();
    QDialog::done(result);
}

bool URLChecker::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_combo && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            Check();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
