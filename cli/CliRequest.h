#pragma once

#include <QString>
#include <QStringList>
#include <optional>

// One vantrel-cli command line, checked for form only (files are not looked at).
struct CliRequest
{
    enum class Command { Help, Html, Dump, Save, Import, New, TestPage };

    Command command = Command::Help;
    bool testForm = false; // html --test
    QString input;         // MAP.imp, CODE.html or PICTURE
    QString into;          // import: --into MAP.imp
    QString output;        // -o

    // Arguments without the program name; nothing when the command line is malformed.
    static std::optional<CliRequest> Parse(const QStringList& Arguments);
    static QString Usage();
};
