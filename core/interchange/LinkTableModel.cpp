#include "core/interchange/LinkTableModel.h"

#include "core/interchange/LinkChecker.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <utility>

namespace {

using State = LinkStatus::State;

QString Counted(int Count, const char* What)
{
    return QString::number(Count) + QLatin1Char(' ') + QLatin1String(What);
}

} // namespace

LinkTableModel::LinkTableModel(QObject* parent)
    : QAbstractTableModel(parent), m_checker(new LinkChecker(this))
{
    connect(m_checker, &LinkChecker::Checked, this, &LinkTableModel::Checked);
}

LinkTableModel::~LinkTableModel() = default;

void LinkTableModel::SetTimeout(std::chrono::milliseconds Timeout)
{
    m_checker->SetTimeout(Timeout);
}

void LinkTableModel::SetLinks(const QStringList& Links)
{
    beginResetModel();
    m_checker->Cancel();
    m_waiting.clear();
    m_counts.fill(0);
    m_brokenRows = 0;
    m_rows.clear();
    m_rows.resize(static_cast<std::size_t>(Links.size()));
    m_counts[static_cast<std::size_t>(State::Unchecked)] = static_cast<int>(Links.size());
    for (int row = 0; row < Links.size(); ++row) {
        m_rows[Index(row)].link = Links[row];
        Resolve(row);
    }
    endResetModel();
    emit SummaryChanged();
}

void LinkTableModel::SetBase(const QString& BaseURL, const QString& PictureFolder)
{
    Cancel();
    m_resolver = LinkResolver(BaseURL, PictureFolder);
    for (int row = 0; row < rowCount(); ++row)
        Resolve(row);
    RowsChanged(0, rowCount() - 1);
    emit SummaryChanged();
}

void LinkTableModel::SetLink(int Row, const QString& Link)
{
    if (Row < 0 || Row >= rowCount())
        return;
    Entry& row = m_rows[Index(Row)];
    const bool wasChecking = IsChecking();
    if (row.status.state == State::Checking)
        m_waiting[row.key].removeAll(Row);
    row.link = Link;
    Resolve(Row);
    RowsChanged(Row, Row);
    Changed(wasChecking);
}

void LinkTableModel::Changed(bool WasChecking)
{
    emit SummaryChanged();
    if (WasChecking && !IsChecking())
        emit Finished();
}

void LinkTableModel::Resolve(int Row)
{
    Entry& row = m_rows[Index(Row)];
    row.resolved = m_resolver.Resolve(row.link);
    row.key = row.resolved.NeedsCheck() ? LinkChecker::Key(row.resolved.url) : QString();
    SetStatus(Row, row.resolved.status, true);
}

void LinkTableModel::CheckAll()
{
    for (int row = 0; row < rowCount(); ++row)
        StartCheck(row);
    RowsChanged(0, rowCount() - 1);
    emit SummaryChanged();
}

void LinkTableModel::CheckRow(int Row)
{
    if (Row < 0 || Row >= rowCount())
        return;
    StartCheck(Row);
    RowsChanged(Row, Row);
    emit SummaryChanged();
}

void LinkTableModel::StartCheck(int Row)
{
    const Entry& row = m_rows[Index(Row)];
    if (!row.resolved.NeedsCheck() || row.status.state == State::Checking)
        return;
    LinkStatus checking;
    checking.state = State::Checking;
    SetStatus(Row, checking, true);
    // Every address in m_waiting is queued with the checker already.
    QList<int>& rows = m_waiting[row.key];
    if (rows.isEmpty())
        m_checker->Check(row.key, row.resolved.url);
    rows.append(Row);
}

void LinkTableModel::Cancel()
{
    m_checker->Cancel();
    const QHash<QString, QList<int>> waiting = std::exchange(m_waiting, {});
    if (waiting.isEmpty())
        return;
    for (const QList<int>& rows : waiting) {
        for (const int row : rows) {
            if (m_rows[Index(row)].status.state == State::Checking) {
                SetStatus(row, LinkStatus(), true);
                RowsChanged(row, row);
            }
        }
    }
    emit SummaryChanged();
}

void LinkTableModel::Checked(const QString& Key, const LinkStatus& Status)
{
    const bool wasChecking = IsChecking();
    const QList<int> rows = m_waiting.take(Key);
    for (const int row : rows) {
        if (m_rows[Index(row)].status.state != State::Checking)
            continue;
        SetStatus(row, Status, true);
        RowsChanged(row, row);
    }
    Changed(wasChecking);
}

void LinkTableModel::SetStatus(int Row, const LinkStatus& Status, bool Quiet)
{
    LinkStatus& status = m_rows[Index(Row)].status;
    --m_counts[static_cast<std::size_t>(status.state)];
    m_brokenRows -= status.IsBroken() ? 1 : 0;
    status = Status;
    ++m_counts[static_cast<std::size_t>(status.state)];
    m_brokenRows += status.IsBroken() ? 1 : 0;
    if (!Quiet)
        RowsChanged(Row, Row);
}

void LinkTableModel::RowsChanged(int First, int Last)
{
    if (First <= Last)
        emit dataChanged(index(First, 0), index(Last, ColumnCount - 1));
}

QString LinkTableModel::Label(int Row) const
{
    return Row == rowCount() - 1 ? QStringLiteral("Default area")
                                 : QStringLiteral("Shape #%1").arg(Row + 1);
}

QString LinkTableModel::Summary() const
{
    const int rows = rowCount();
    QString text = rows == 1 ? QStringLiteral("1 link: ") : Counted(rows, "links: ");
    text += Counted(m_brokenRows, "broken");
    const int ok = Count(State::Ok);
    const int moved = Count(State::Moved);
    const int notChecked = Count(State::NotChecked) + Count(State::NoAddress);
    const int toCheck = Count(State::Unchecked) + Count(State::Checking);
    if (ok > 0)
        text += QStringLiteral(", ") + Counted(ok, "OK");
    if (moved > 0)
        text += QStringLiteral(", ") + Counted(moved, "moved");
    if (notChecked > 0)
        text += QStringLiteral(", ") + Counted(notChecked, "not checked");
    if (toCheck > 0)
        text += QStringLiteral(", ") + Counted(toCheck, "to check");
    text += QLatin1Char('.');
    return IsChecking() ? QStringLiteral("Checking… ") + text : text;
}

int LinkTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int LinkTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant LinkTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Entry& row = m_rows[Index(index.row())];
    const bool broken = row.status.IsBroken();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        switch (index.column()) {
        case LinkColumn:
            return Label(index.row());
        case UrlColumn:
            return row.link;
        case StatusColumn:
            return row.status.Text();
        case AddressColumn:
            return row.resolved.Address();
        }
        break;
    case Qt::ForegroundRole:
        if (broken)
            return QBrush(QColor(160, 0, 0));
        if (row.status.state == State::Moved && index.column() == StatusColumn)
            return QBrush(QColor(150, 90, 0));
        break;
    case Qt::BackgroundRole:
        if (broken)
            return QBrush(QColor(255, 226, 226));
        break;
    case Qt::FontRole:
        if (broken && index.column() == StatusColumn) {
            QFont bold;
            bold.setBold(true);
            return bold;
        }
        break;
    default:
        break;
    }
    return QVariant();
}

QVariant LinkTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case LinkColumn:
        return QStringLiteral("Link");
    case UrlColumn:
        return QStringLiteral("URL");
    case StatusColumn:
        return QStringLiteral("Status");
    case AddressColumn:
        return QStringLiteral("Resolved address");
    }
    return QVariant();
}
