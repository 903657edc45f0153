#include "ui/frame/RecoverMaps.h"

#include "core/base/ModalUi.h"
#include "core/interchange/RecoveryOffer.h"
#include "ui/dialogs/DialogPlacement.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

RecoverMaps::RecoverMaps(RecoveryOffer& Offer, ModalUi& Ui, QWidget* parent)
    : QDialog(parent), m_offer(Offer), m_ui(Ui), m_list(new QTreeWidget(this)),
      m_recover(new QPushButton(QStringLiteral("&Recover"), this)),
      m_discard(new QPushButton(QStringLiteral("&Discard"), this))
{
    setObjectName(QStringLiteral("RecoverMaps"));
    setWindowTitle(QStringLiteral("Recover Maps"));

    auto* intro = new QLabel(m_offer.Count() > 0
                                 ? QStringLiteral("Vantrel was closed without saving these maps. "
                                                  "Recover opens them as they were last kept; "
                                                  "save them to keep the changes.")
                                 : QStringLiteral("Vantrel was closed without saving maps, but "
                                                  "none of them can be recovered."),
                             this);
    intro->setWordWrap(true);
    intro->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    m_list->setObjectName(QStringLiteral("lstRecover"));
    m_list->setColumnCount(3);
    m_list->setHeaderLabels(
        {QStringLiteral("Map"), QStringLiteral("Picture"), QStringLiteral("Last Changed")});
    m_list->setRootIsDecorated(false);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setIconSize(QSize(48, 48));
    m_list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);

    auto* problems = new QLabel(m_offer.Problems().join(QStringLiteral("\n\n")), this);
    problems->setObjectName(QStringLiteral("lblProblems"));
    problems->setWordWrap(true);
    problems->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    problems->setTextInteractionFlags(Qt::TextSelectableByMouse);
    problems->setVisible(!m_offer.Problems().isEmpty());

    m_recover->setObjectName(QStringLiteral("btnRecover"));
    m_recover->setDefault(true);
    m_discard->setObjectName(QStringLiteral("btnDiscard"));
    auto* later = new QPushButton(
        m_offer.Count() > 0 ? QStringLiteral("&Later") : QStringLiteral("&Close"), this);
    later->setObjectName(QStringLiteral("btnLater"));
    later->setToolTip(QStringLiteral("Keep the maps not yet recovered for the next start"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_recover);
    buttons->addWidget(m_discard);
    buttons->addWidget(later);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(intro);
    layout->addWidget(m_list, 1);
    layout->addWidget(problems);
    // Without a list the room left goes under the text, not between its lines.
    if (m_offer.Count() == 0)
        layout->addStretch(1);
    layout->addLayout(buttons);
    m_list->setVisible(m_offer.Count() > 0);
    m_recover->setVisible(m_offer.Count() > 0);
    m_discard->setVisible(m_offer.Count() > 0);
    if (m_offer.Count() > 0) {
        resize(560, 320);
    } else {
        setMinimumWidth(560);
        adjustSize();
    }
    DialogPlacement::CentreOnScreen(*this);

    connect(m_recover, &QPushButton::clicked, this, &RecoverMaps::RecoverSelected);
    connect(m_discard, &QPushButton::clicked, this, &RecoverMaps::DiscardSelected);
    connect(later, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] {
        const bool any = !m_list->selectedItems().isEmpty();
        m_recover->setEnabled(any);
        m_discard->setEnabled(any);
    });
    Fill();
}

void RecoverMaps::Fill()
{
    m_list->clear();
    for (int row = 0; row < m_offer.Count(); ++row) {
        const RecoveryStore::Found& map = m_offer.At(row);
        auto* item = new QTreeWidgetItem(m_list, {map.caption, RecoveryOffer::PictureText(map),
                                                  RecoveryOffer::ChangedText(map)});
        item->setToolTip(0, map.fileName.isEmpty() ? QStringLiteral("Never saved")
                                                   : QDir::toNativeSeparators(map.fileName));
        item->setToolTip(1, QDir::toNativeSeparators(map.picture));
        if (!map.document.OrigPic.isNull())
            item->setIcon(0, QPixmap::fromImage(map.document.OrigPic.scaled(
                                 48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
        item->setSelected(true);
    }
}

QList<int> RecoverMaps::SelectedRows() const
{
    QList<int> rows;
    for (QTreeWidgetItem* item : m_list->selectedItems())
        rows.append(m_list->indexOfTopLevelItem(item));
    std::sort(rows.begin(), rows.end(), std::greater<int>());
    return rows;
}

void RecoverMaps::RecoverSelected()
{
    for (const int row : SelectedRows())
        m_offer.Recover(row);
    Decided();
}

void RecoverMaps::DiscardSelected()
{
    const QList<int> rows = SelectedRows();
    if (rows.isEmpty())
        return;
    const QString what =
        rows.size() == 1 ? QStringLiteral("the changes to \"%1\"").arg(m_offer.At(rows[0]).caption)
                         : QStringLiteral("the changes to %1 maps").arg(rows.size());
    if (!m_ui.CriticalQuestion(
            QStringLiteral("Discard %1? They cannot be recovered afterwards.").arg(what)))
        return;
    for (const int row : rows)
        m_offer.Discard(row);
    Decided();
}

void RecoverMaps::Decided()
{
    Fill();
    if (m_offer.Count() == 0)
        accept();
}
