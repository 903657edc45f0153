#pragma once

#include <QDebug>
#include <QString>
#include <QTest>

// Names the row of a table-driven loop when a check inside it fails. A failed check
// returns from the test function and names only its line, so the row's guard, leaving
// scope on that return, says which row it was.
class TableCase
{
public:
    template <class... Values> explicit TableCase(const Values&... Row)
    {
        QDebug out(&m_row);
        (out << ... << Row);
    }
    TableCase(const TableCase&) = delete;
    TableCase& operator=(const TableCase&) = delete;
    ~TableCase()
    {
        if (QTest::currentTestFailed())
            qWarning("   in the row: %s", qPrintable(m_row.trimmed()));
    }

private:
    QString m_row;
};
