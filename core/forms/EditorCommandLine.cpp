#include "core/forms/EditorCommandLine.h"

#include "core/base/ProductVersion.h"

#include <QCoreApplication>

EditorCommandLine::EditorCommandLine()
    : m_quitAfterFirstPaint(QStringLiteral("quit-after-first-paint"),
                            QStringLiteral("Quit once the first map is painted (for timing "
                                           "start-up)."))
{
    m_parser.setApplicationDescription(QStringLiteral("Editor for HTML client-side image maps."));
    m_parser.addHelpOption();
    m_parser.addVersionOption();
    m_parser.addPositionalArgument(QStringLiteral("files"),
                                   QStringLiteral("Image Map Files (.imp) to open, or pictures "
                                                  "to start new maps from."),
                                   QStringLiteral("[FILE...]"));
    m_quitAfterFirstPaint.setFlags(QCommandLineOption::HiddenFromHelp);
    m_parser.addOption(m_quitAfterFirstPaint);
}

bool EditorCommandLine::OnlyPrints(const QStringList& Arguments)
{
    EditorCommandLine line;
    // --help-all lists the options of the windowing system too: that takes the display.
    return line.Parse(Arguments) && !Arguments.contains(QStringLiteral("--help-all")) &&
           (line.m_parser.isSet(QStringLiteral("help")) ||
            line.m_parser.isSet(QStringLiteral("version")));
}

void EditorCommandLine::Describe()
{
    QCoreApplication::setApplicationName(QStringLiteral("Vantrel"));
    QCoreApplication::setApplicationVersion(ProductVersion::Text());
    QCoreApplication::setOrganizationName(QStringLiteral("Vantrel"));
}

void EditorCommandLine::Process(const QCoreApplication& App)
{
    m_parser.process(App);
}

bool EditorCommandLine::Parse(const QStringList& Arguments)
{
    return m_parser.parse(Arguments);
}
