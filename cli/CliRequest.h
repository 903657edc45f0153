#pragma once

#include "core/interchange/MapFormat.h"

#include <QString>
#include <QStringList>
#include <optional>

// One vantrel-cli command line, checked for form only (files are not looked at).
struct CliRequest
{
    enum class Command { Help, Version, Html, Dump, Save, Import, New, TestPage, Lint, Links };

    Command command = Command::Help;
    bool testForm = false; // html --test
    QString input;         // MAP.imp, CODE.html or PICTURE
    QString into;          // import: --into MAP.imp
    QString output;        // -o
    // The web options (CliWebOptions): html/testpage --format, lint --json,
    // import --keep-text --add --map NAME.
    MapFormat format = MapFormat::Classic;
    bool json = false;
    bool keepText = false;
    bool add = false;
    QString mapName;
    // links --base URL --timeout SECONDS (CliLinkOptions); --json as above.
    QString base;
    int timeoutMs = 10000;

    // Arguments without the program name; nothing when the command line is malformed,
    // and then Why, when given, says what is wrong.
    static std::optional<CliRequest> Parse(const QStringList& Arguments, QString* Why = nullptr);
    static QString Usage();
};
