#include "cli/CliRunner.h"

#include "cli/LinksCommand.h"
#include "cli/MapJson.h"
#include "core/base/ProductVersion.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/MapCodeGenerator.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/MapTextCodec.h"
#include "core/interchange/NewMap.h"
#include "core/interchange/TestPage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <exception>

namespace {

QString LoadFileMessage()
{
    return QStringLiteral("There was an error while trying to load the file.");
}

} // namespace

CliRunner::CliRunner(QIODevice& Out, QIODevice& Err) : m_out(Out), m_err(Err) {}

int CliRunner::Run(const CliRequest& Request)
{
    // Run-time errors (a 16-bit overflow while rescaling, ...) end the command as they
    // end an editor command: with a message.
    try {
        switch (Request.command) {
        case CliRequest::Command::Help:
            m_out.write(CliRequest::Usage().toUtf8());
            return 0;
        case CliRequest::Command::Version:
            m_out.write(QStringLiteral("vantrel-cli %1\n").arg(ProductVersion::Text()).toUtf8());
            return 0;
        case CliRequest::Command::Html:
            return Request.format == MapFormat::Classic ? Html(Request) : WebHtml(Request);
        case CliRequest::Command::Dump:
            return Dump(Request);
        case CliRequest::Command::Save:
            return Save(Request);
        case CliRequest::Command::Import:
            return Import(Request);
        case CliRequest::Command::New:
            return New(Request);
        case CliRequest::Command::TestPage:
            return Request.format == MapFormat::Classic ? TestPage(Request) : WebTestPage(Request);
        case CliRequest::Command::Lint:
            return Lint(Request);
        case CliRequest::Command::Links:
            return LinksCommand(m_out, m_err).Run(Request);
        }
    } catch (const std::exception& error) {
        return Fail({QString::fromUtf8(error.what())});
    }
    return 1;
}

int CliRunner::Fail(const QStringList& Messages, const QString& Detail)
{
    for (const QString& message : Messages)
        m_err.write((message + QLatin1Char('\n')).toUtf8());
    // The cause, when known, on a line of its own after the exact messages.
    if (!Detail.isEmpty())
        m_err.write((Detail + QLatin1Char('\n')).toUtf8());
    return 1;
}

std::optional<MapDocument> CliRunner::Open(const QString& Path)
{
    MapFile::ReadResult read = MapFile::OpenMapFile(Path);
    if (!read.ok) {
        Fail(read.messages, read.detail);
        return std::nullopt;
    }
    return std::move(read.document);
}

std::optional<QString> CliRunner::ReadCode(const QString& Path)
{
    QFile file(Path);
    if (!file.open(QIODevice::ReadOnly)) {
        Fail({LoadFileMessage()}, file.errorString());
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    return MapTextCodec::Decode(bytes).value_or(QString::fromUtf8(bytes));
}

int CliRunner::SaveAs(const MapDocument& Document, const QString& Path)
{
    const QString name = QDir::toNativeSeparators(QFileInfo(Path).absoluteFilePath());
    const MapFile::WriteResult saved = MapFile::SaveMap(Document, name);
    return saved.ok ? 0 : Fail({saved.message}, saved.detail);
}

int CliRunner::Html(const CliRequest& Request)
{
    std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    const QString code = MapCodeGenerator::GenerateMapCode(
        *document,
        Request.testForm ? MapCodeGenerator::Form::Test : MapCodeGenerator::Form::Viewing);
    if (code.isEmpty())
        return Fail({MapCodeGenerator::NoShapesMessage()});
    m_out.write(code.toUtf8());
    return 0;
}

int CliRunner::Dump(const CliRequest& Request)
{
    const std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    m_out.write(MapJson::Dump(*document));
    return 0;
}

int CliRunner::Save(const CliRequest& Request)
{
    const std::optional<MapDocument> document = Open(Request.input);
    return document ? SaveAs(*document, Request.output) : 1;
}

int CliRunner::Import(const CliRequest& Request)
{
    if (Request.keepText || Request.add || !Request.mapName.isEmpty())
        return ImportWithOptions(Request);
    const std::optional<QString> text = ReadCode(Request.input);
    if (!text)
        return 1;

    std::optional<MapDocument> document = Open(Request.into);
    if (!document)
        return 1;
    const HtmlImporter::Result result = HtmlImporter::Convert(*text, *document);
    if (!result.ok)
        return Fail({result.message}, result.detail);
    HtmlImporter::Apply(result, *document);
    return SaveAs(*document, Request.output);
}

int CliRunner::New(const CliRequest& Request)
{
    const NewMap::Result made = NewMap::FromPicture(Request.input);
    if (!made.ok)
        return Fail({made.message}, made.detail);
    return SaveAs(made.document, Request.output);
}

int CliRunner::TestPage(const CliRequest& Request)
{
    std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    const QString code = MapCodeGenerator::GenerateMapCode(*document, MapCodeGenerator::Form::Test);
    if (code.isEmpty())
        return Fail({MapCodeGenerator::NoShapesMessage()});
    if (!TestPage::Write(Request.output, code))
        return Fail({MapFile::SaveErrorMessage()});
    return 0;
}
