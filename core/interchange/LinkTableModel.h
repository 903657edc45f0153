#pragma once

#include "core/interchange/LinkResolver.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>
#include <array>
#include <chrono>
#include <vector>

class LinkChecker;

// Every link of a map, one row each (the shapes' in shape order, then the default
// area's), with the address it resolves to and its status. Checks run only when asked
// for; rows that share an address share one check.
class LinkTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { LinkColumn, UrlColumn, StatusColumn, AddressColumn, ColumnCount };

    explicit LinkTableModel(QObject* parent = nullptr);
    ~LinkTableModel() override;

    // The links as the URL checker lists them: shapes first, the default area last.
    void SetLinks(const QStringList& Links);
    // Resolves every row again; statuses already known are forgotten.
    void SetBase(const QString& BaseURL, const QString& PictureFolder);
    // Replaces one row's link (after an edit); its status is forgotten.
    void SetLink(int Row, const QString& Link);

    void CheckAll();
    void CheckRow(int Row);
    // Stops the checks in flight; their rows go back to unchecked.
    void Cancel();
    bool IsChecking() const { return Count(LinkStatus::State::Checking) > 0; }
    void SetTimeout(std::chrono::milliseconds Timeout);

    // "Shape #3", or "Default area" for the last row.
    QString Label(int Row) const;
    const QString& Link(int Row) const { return m_rows[Index(Row)].link; }
    const ResolvedLink& Resolved(int Row) const { return m_rows[Index(Row)].resolved; }
    const LinkStatus& Status(int Row) const { return m_rows[Index(Row)].status; }
    int BrokenCount() const { return m_brokenRows; }
    // One line that counts the rows by outcome.
    QString Summary() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

signals:
    // The counts behind Summary() changed.
    void SummaryChanged();
    // Every check asked for has reported.
    void Finished();

private:
    struct Entry
    {
        QString link;
        ResolvedLink resolved;
        QString key; // what the checker is asked, when it is asked anything
        LinkStatus status;
    };

    static std::size_t Index(int Row) { return static_cast<std::size_t>(Row); }
    void Resolve(int Row);
    // Quiet: the caller reports the change (many rows at once).
    void SetStatus(int Row, const LinkStatus& Status, bool Quiet = false);
    void StartCheck(int Row);
    void Checked(const QString& Key, const LinkStatus& Status);
    void RowsChanged(int First, int Last);
    // Tells the views; Finished too when the last check in flight has just reported.
    void Changed(bool WasChecking);
    int Count(LinkStatus::State State) const { return m_counts[static_cast<std::size_t>(State)]; }

    LinkChecker* m_checker;
    LinkResolver m_resolver{QString(), QString()};
    std::vector<Entry> m_rows;
    // Rows waiting for each address asked.
    QHash<QString, QList<int>> m_waiting;
    // Rows per LinkStatus::State (NoAddress is the last).
    std::array<int, static_cast<std::size_t>(LinkStatus::State::NoAddress) + 1> m_counts{};
    int m_brokenRows = 0;
};
