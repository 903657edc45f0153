// The CliRunner commands of the modern web formats, the map check and the lossless import.
#include "cli/CliRunner.h"
#include "core/interchange/FormattedMapCode.h"
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
