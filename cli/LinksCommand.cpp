#include "cli/LinksCommand.h"

#include "cli/CliRequest.h"
#include "core/interchange/LinkTableModel.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/URLCheckList.h"

#include <QEventLoop>
#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <chrono>

namespace {

// The resolved address, or the link as written when it resolves to nothing.
QString Shown(const LinkTableModel& Links, int Row)
{
    const QString address = Links.Resolved(Row).Address();
    return address.isEmpty() ? Links.Link(Row) : address;
}

} // namespace

LinksCommand::LinksCommand(QIODevice& Out, QIODevice& Err) : m_out(Out), m_err(Err) {}

int LinksCommand::Run(const CliRequest& Request)
{
    const MapFile::ReadResult read = MapFile::OpenMapFile(Request.input);
    if (!read.ok) {
        for (const QString& message : read.messages)
            m_err.write((message + QLatin1Char('\n')).toUtf8());
        // The cause on a line of its own, as the other commands give it.
        if (!read.detail.isEmpty())
            m_err.write((read.detail + QLatin1Char('\n')).toUtf8());
        return 1;
    }
    LinkTableModel links;
    links.SetTimeout(std::chrono::milliseconds(Request.timeoutMs));
    links.SetLinks(URLCheckList(read.document).Entries());
    links.SetBase(Request.base, read.document.ImagePath);
    links.CheckAll();
    if (links.IsChecking()) {
        QEventLoop wait;
        QObject::connect(&links, &LinkTableModel::Finished, &wait, &QEventLoop::quit);
        wait.exec();
    }
    if (Request.json)
        PrintJson(links);
    else
        PrintLines(links);
    return links.BrokenCount() > 0 ? BrokenLinksFound : 0;
}

void LinksCommand::PrintLines(const LinkTableModel& Links)
{
    for (int row = 0; row < Links.rowCount(); ++row) {
        const QString line = Links.Label(row) + QLatin1Char('\t') + Links.Status(row).Text() +
                             QLatin1Char('\t') + Shown(Links, row) + QLatin1Char('\n');
        m_out.write(line.toUtf8());
    }
}

void LinksCommand::PrintJson(const LinkTableModel& Links)
{
    QJsonArray rows;
    for (int row = 0; row < Links.rowCount(); ++row) {
        const LinkStatus& status = Links.Status(row);
        QJsonObject entry{
            {QStringLiteral("link"), Links.Label(row)},
            {QStringLiteral("url"), Links.Link(row)},
            {QStringLiteral("address"), Links.Resolved(row).Address()},
            {QStringLiteral("status"), status.Text()},
            {QStringLiteral("state"), status.Word()},
            {QStringLiteral("broken"), status.IsBroken()},
        };
        if (status.code > 0)
            entry.insert(QStringLiteral("code"), status.code);
        if (status.state == LinkStatus::State::Moved)
            entry.insert(QStringLiteral("final"), status.detail);
        rows.append(entry);
    }
    const QJsonObject all{
        {QStringLiteral("links"), rows},
        {QStringLiteral("broken"), Links.BrokenCount()},
        {QStringLiteral("summary"), Links.Summary()},
    };
    m_out.write(QJsonDocument(all).toJson(QJsonDocument::Indented));
}
