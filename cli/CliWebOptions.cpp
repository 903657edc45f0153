#include "cli/CliWebOptions.h"

#include "cli/CliRequest.h"

CliWebOptions::Taken CliWebOptions::Take(CliRequest& Request, const QStringList& Arguments,
                                         qsizetype& Index)
{
    using C = CliRequest::Command;
    const QString& option = Arguments[Index];
    const C command = Request.command;
    const bool hasValue = Index + 1 < Arguments.size();

    if (option == QLatin1String("--format") && (command == C::Html || command == C::TestPage)) {
        const auto format = hasValue ? MapFormats::FromName(Arguments[Index + 1]) : std::nullopt;
        if (!format)
            return Taken::Malformed;
        Request.format = *format;
        ++Index;
        return Taken::Yes;
    }
    if (option == QLatin1String("--json") && command == C::Lint) {
        Request.json = true;
        return Taken::Yes;
    }
    if (command == C::Import) {
        if (option == QLatin1String("--keep-text")) {
            Request.keepText = true;
            return Taken::Yes;
        }
        if (option == QLatin1String("--add")) {
            Request.add = true;
            return Taken::Yes;
        }
        if (option == QLatin1String("--map")) {
            if (!hasValue || Arguments[Index + 1].isEmpty())
                return Taken::Malformed;
            Request.mapName = Arguments[++Index];
            return Taken::Yes;
        }
    }
    return Taken::No;
}
