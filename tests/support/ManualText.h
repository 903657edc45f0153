#pragma once

#include <QFile>
#include <QRegularExpression>
#include <QString>

// The user manual as a reader sees it: the words without the markup, blanks collapsed.
inline QString ManualText()
{
    QFile file(QStringLiteral(VANTREL_SOURCE_DIR "/resources/help/Vantrel Help File.html"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QString text = QString::fromUtf8(file.readAll());
    text.remove(QRegularExpression(QStringLiteral("<[^>]*>")));
    const std::pair<const char*, const char*> entities[] = {
        {"&rsaquo;", "\u203a"}, {"&nbsp;", " "},       {"&ldquo;", "\u201c"},
        {"&rdquo;", "\u201d"},  {"&mdash;", "\u2014"}, {"&rarr;", "\u2192"},
        {"&lt;", "<"},          {"&gt;", ">"},         {"&amp;", "&"}};
    for (const auto& [entity, character] : entities)
        text.replace(QString::fromLatin1(entity), QString::fromUtf8(character));
    return text.simplified();
}
