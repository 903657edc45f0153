#include "cli/CliLinkOptions.h"

#include "cli/CliRequest.h"

namespace {

// Long enough for the slowest server anyone would wait for.
constexpr double LongestTimeout = 3600.0;

} // namespace

CliLinkOptions::Taken CliLinkOptions::Take(CliRequest& Request, const QStringList& Arguments,
                                           qsizetype& Index)
{
    if (Request.command != CliRequest::Command::Links)
        return Taken::No;
    const QString& option = Arguments[Index];
    const bool hasValue = Index + 1 < Arguments.size();
    if (option == QLatin1String("--json")) {
        Request.json = true;
        return Taken::Yes;
    }
    if (option == QLatin1String("--base")) {
        if (!hasValue)
            return Taken::Malformed;
        Request.base = Arguments[++Index];
        return Taken::Yes;
    }
    if (option == QLatin1String("--timeout")) {
        bool number = false;
        const double seconds = hasValue ? Arguments[Index + 1].toDouble(&number) : 0.0;
        if (!number || !(seconds > 0.0) || seconds > LongestTimeout)
            return Taken::Malformed;
        Request.timeoutMs = static_cast<int>(seconds * 1000.0 + 0.5);
        ++Index;
        return Taken::Yes;
    }
    return Taken::No;
}
