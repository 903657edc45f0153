#pragma once

class LinkTableModel;
class QIODevice;
struct CliRequest;

// vantrel-cli links: every link of a map checked, one line (or JSON object) each.
// Exit status 0 when none is broken, 3 when some are, 1 when the map cannot be read.
class LinksCommand
{
public:
    LinksCommand(QIODevice& Out, QIODevice& Err);
    int Run(const CliRequest& Request);

    static constexpr int BrokenLinksFound = 3;

private:
    void PrintLines(const LinkTableModel& Links);
    void PrintJson(const LinkTableModel& Links);

    QIODevice& m_out;
    QIODevice& m_err;
};
