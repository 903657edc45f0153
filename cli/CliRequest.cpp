#include "cli/CliRequest.h"

#include "cli/CliLinkOptions.h"
#include "cli/CliWebOptions.h"

#include <QHash>

namespace {

struct Grammar
{
    CliRequest::Command command;
    bool allowsTest;
    bool needsInto;
    bool needsOutput;
};

const QHash<QString, Grammar>& Commands()
{
    using C = CliRequest::Command;
    static const QHash<QString, Grammar> commands{
        {QStringLiteral("html"), {C::Html, true, false, false}},
        {QStringLiteral("dump"), {C::Dump, false, false, false}},
        {QStringLiteral("save"), {C::Save, false, false, true}},
        {QStringLiteral("import"), {C::Import, false, true, true}},
        {QStringLiteral("new"), {C::New, false, false, true}},
        {QStringLiteral("testpage"), {C::TestPage, false, false, true}},
        {QStringLiteral("lint"), {C::Lint, false, false, false}},
        {QStringLiteral("links"), {C::Links, false, false, false}},
    };
    return commands;
}

} // namespace

std::optional<CliRequest> CliRequest::Parse(const QStringList& Arguments, QString* Why)
{
    // Says what is wrong with the line; the usage follows it on the way out.
    const auto refuse = [Why](const QString& why) -> std::optional<CliRequest> {
        if (Why != nullptr)
            *Why = why;
        return std::nullopt;
    };
    CliRequest request;
    if (Arguments.size() == 1 &&
        (Arguments[0] == QLatin1String("--help") || Arguments[0] == QLatin1String("-h")))
        return request;
    if (Arguments.size() == 1 && Arguments[0] == QLatin1String("--version")) {
        request.command = Command::Version;
        return request;
    }
    if (Arguments.isEmpty())
        return refuse(QStringLiteral("no command given"));
    if (!Commands().contains(Arguments[0]))
        return refuse(QStringLiteral("unknown command \"%1\"").arg(Arguments[0]));
    const QString& name = Arguments[0];
    const Grammar grammar = Commands().value(name);
    request.command = grammar.command;

    QStringList positional;
    bool into = false;
    bool output = false;
    for (qsizetype i = 1; i < Arguments.size(); ++i) {
        const QString& argument = Arguments[i];
        const bool isInto = argument == QLatin1String("--into");
        const bool isOutput = argument == QLatin1String("-o");
        if (isInto || isOutput) {
            bool& seen = isInto ? into : output;
            if (seen)
                return refuse(QStringLiteral("%1 is given twice").arg(argument));
            if (i + 1 >= Arguments.size())
                return refuse(QStringLiteral("%1 needs a file name").arg(argument));
            seen = true;
            (isInto ? request.into : request.output) = Arguments[++i];
        } else if (argument == QLatin1String("--test") && grammar.allowsTest && !request.testForm) {
            request.testForm = true;
        } else if (const auto taken = CliWebOptions::Take(request, Arguments, i);
                   taken != CliWebOptions::Taken::No) {
            if (taken == CliWebOptions::Taken::Malformed)
                return refuse(
                    QStringLiteral("%1 is missing its value or has a wrong one").arg(argument));
        } else if (const auto link = CliLinkOptions::Take(request, Arguments, i);
                   link != CliLinkOptions::Taken::No) {
            if (link == CliLinkOptions::Taken::Malformed)
                return refuse(
                    QStringLiteral("%1 is missing its value or has a wrong one").arg(argument));
        } else if (argument.startsWith(QLatin1Char('-')) && argument.size() > 1) {
            return refuse(QStringLiteral("%1 has no option %2").arg(name, argument));
        } else {
            positional << argument;
        }
    }
    if (positional.size() != 1 || positional[0].isEmpty())
        return refuse(QStringLiteral("%1 takes one file, not %2").arg(name).arg(positional.size()));
    if (into != grammar.needsInto)
        return refuse(grammar.needsInto ? QStringLiteral("%1 needs --into").arg(name)
                                        : QStringLiteral("%1 has no option --into").arg(name));
    if (output != grammar.needsOutput)
        return refuse(grammar.needsOutput ? QStringLiteral("%1 needs -o").arg(name)
                                          : QStringLiteral("%1 has no option -o").arg(name));
    if ((into && request.into.isEmpty()) || (output && request.output.isEmpty()))
        return refuse(QStringLiteral("%1 needs a file name")
                          .arg(into && request.into.isEmpty() ? QStringLiteral("--into")
                                                              : QStringLiteral("-o")));
    request.input = positional[0];
    return request;
}

QString CliRequest::Usage()
{
    return QStringLiteral(
        "Usage: vantrel-cli COMMAND ...\n"
        "  html [--test] [--format F] MAP.imp         print the map's HTML code\n"
        "                                             (F: classic, html5 or svg)\n"
        "  dump MAP.imp                               print the map as JSON\n"
        "  save MAP.imp -o OUT.imp                    save the map under another name\n"
        "  import CODE.html --into MAP.imp -o OUT.imp replace the map's shapes by pasted code\n"
        "         [--keep-text] [--add] [--map NAME]  keep text as written, add to the shapes\n"
        "  new PICTURE -o OUT.imp                     make a new map from a picture\n"
        "  testpage [--format F] MAP.imp -o PAGE.htm  write the map's test page\n"
        "  lint [--json] MAP.imp                      check the map for problems\n"
        "  links [--base URL] [--json] [--timeout S] MAP.imp\n"
        "                                             check every link of the map\n"
        "Exit status: 0 done, 1 failed (messages on standard error), 2 wrong usage,\n"
        "3 lint printed findings or links found broken links.\n");
}
