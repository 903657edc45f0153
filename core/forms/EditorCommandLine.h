#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

class QCoreApplication;

// The editor's command line: maps and pictures to open, --help, --version and the
// hidden --quit-after-first-paint that times start-up.
class EditorCommandLine
{
public:
    EditorCommandLine();

    // Whether Arguments (the program's name first) are well formed and ask only for the
    // help or the version: those print and quit, needing no display.
    static bool OnlyPrints(const QStringList& Arguments);
    // The name and version --version prints, and the names settings are kept under.
    static void Describe();

    // Qt's processing: a malformed line prints why and exits 1; --help and --version print
    // and exit 0.
    void Process(const QCoreApplication& App);
    // Parsing alone, for tests and OnlyPrints.
    bool Parse(const QStringList& Arguments);
    QString HelpText() const { return m_parser.helpText(); }

    QStringList Files() const { return m_parser.positionalArguments(); }
    bool QuitAfterFirstPaint() const { return m_parser.isSet(m_quitAfterFirstPaint); }

private:
    QCommandLineParser m_parser;
    QCommandLineOption m_quitAfterFirstPaint;
};
