// The CliRunner commands of the modern web formats, the map check and the lossless import.
#include "cli/CliRunner.h"
#include "core/interchange/FormattedMapCode.h"
#include "core/interchange/HtmlImporter.h"
#include "core/interchange/HtmlMapReader.h"
#include "core/interchange/LosslessImporter.h"
#include "core/interchange/MapCheck.h"
#include "core/interchange/MapFile.h"
#include "core/interchange/TestPage.h"

#include <QIODevice>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

int CliRunner::WebHtml(const CliRequest& Request)
{
    std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    const MapCodeGenerator::Form form =
        Request.testForm ? MapCodeGenerator::Form::Test : MapCodeGenerator::Form::Viewing;
    const FormattedMapCode code = FormattedMapCode::Generate(*document, Request.format, form);
    if (code.Text.isEmpty())
        return Fail({MapCodeGenerator::NoShapesMessage()});
    m_out.write(code.Text.toUtf8());
    return 0;
}

int CliRunner::WebTestPage(const CliRequest& Request)
{
    std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    const FormattedMapCode code =
        FormattedMapCode::Generate(*document, Request.format, MapCodeGenerator::Form::Test);
    if (code.Text.isEmpty())
        return Fail({MapCodeGenerator::NoShapesMessage()});
    if (!TestPage::WritePage(Request.output, code.TestPageText(Request.format)))
        return Fail({MapFile::SaveErrorMessage()});
    return 0;
}

int CliRunner::Lint(const CliRequest& Request)
{
    const std::optional<MapDocument> document = Open(Request.input);
    if (!document)
        return 1;
    const std::vector<MapFinding> findings = MapCheck::Check(*document);
    if (Request.json) {
        QJsonArray list;
        for (const MapFinding& finding : findings) {
            const bool shape = finding.Index >= 0;
            list.append(QJsonObject{
                {QStringLiteral("shape"), shape ? QJsonValue(finding.Index + 1) : QJsonValue()},
                {QStringLiteral("place"), finding.Place()},
                {QStringLiteral("severity"), finding.SeverityName()},
                {QStringLiteral("text"), finding.Text}});
        }
        m_out.write(QJsonDocument(list).toJson(QJsonDocument::Indented));
    } else {
        for (const MapFinding& finding : findings)
            m_out.write((finding.Line() + QLatin1Char('\n')).toUtf8());
    }
    return findings.empty() ? 0 : 3;
}

int CliRunner::ImportWithOptions(const CliRequest& Request)
{
    if (!Request.mapName.isEmpty() && !Request.keepText) {
        m_err.write("--map needs --keep-text\n" + CliRequest::Usage().toUtf8());
        return 2;
    }
    const std::optional<QString> text = ReadCode(Request.input);
    if (!text)
        return 1;

    std::optional<MapDocument> document = Open(Request.into);
    if (!document)
        return 1;
    LosslessImporter::Result result;
    if (Request.keepText) {
        QString refusal;
        const std::vector<HtmlMapReader::Map> maps = HtmlMapReader::ReadMaps(*text, refusal);
        if (!refusal.isEmpty())
            return Fail({refusal});
        std::size_t chosen = 0;
        if (!Request.mapName.isEmpty()) {
            const auto named = std::find_if(maps.begin(), maps.end(), [&](const auto& map) {
                return map.name == Request.mapName;
            });
            if (named == maps.end())
                return Fail(
                    {QStringLiteral("The code holds no map named \"%1\".").arg(Request.mapName)});
            chosen = static_cast<std::size_t>(named - maps.begin());
        }
        result = LosslessImporter::Convert(maps, chosen, *document);
    } else {
        const HtmlImporter::Result classic = HtmlImporter::Convert(*text, *document);
        if (!classic.ok)
            return Fail({classic.message}, classic.detail);
        result = LosslessImporter::FromClassic(classic, document->MapName);
    }
    if (!result.ok)
        return Fail({result.message});
    if (Request.add) {
        const QString limit = LosslessImporter::AddLimitMessage(result, *document);
        if (!limit.isEmpty())
            return Fail({limit});
    }
    LosslessImporter::Apply(result, *document, Request.add);
    return SaveAs(*document, Request.output);
}
