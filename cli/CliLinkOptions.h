#pragma once

#include <QStringList>

struct CliRequest;

// The options of the link check: links --base URL --json --timeout SECONDS.
class CliLinkOptions
{
public:
    enum class Taken { No, Yes, Malformed };
    // Reads the option at Arguments[Index] into Request when it is one of these and the
    // command takes it; Index moves past a value the option consumes.
    static Taken Take(CliRequest& Request, const QStringList& Arguments, qsizetype& Index);
};
