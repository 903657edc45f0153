#include "ui/frame/AppResources.h"
#include "ui/frame/MDIForm1.h"
#include "ui/frame/QtModalUi.h"
#include "ui/frame/QuitAfterFirstPaint.h"
#include "ui/frame/ScreenFitter.h"
#include "ui/frame/frmSplash.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QImageReader>

int main(int argc, char** argv)
{
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    // Every window, whatever the scale factor, opens wholly on its screen.
    ScreenFitter fitter;
    app.installEventFilter(&fitter);
    AppResources::Load();
    QApplication::setApplicationName(QStringLiteral("Vantrel"));
    QApplication::setApplicationVersion(QStringLiteral("1.0.1"));
    QApplication::setOrganizationName(QStringLiteral("Vantrel"));
    QApplication::setDesktopFileName(QStringLiteral("vantrel"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/vantrel.svg")));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Editor for HTML client-side image maps."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Image Map Files (.imp) to open, or pictures to "
                                                "start new maps from."),
                                 QStringLiteral("[FILE...]"));
    QCommandLineOption quitAfterPaint(
        QStringLiteral("quit-after-first-paint"),
        QStringLiteral("Quit once the first map is painted (for timing start-up)."));
    quitAfterPaint.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(quitAfterPaint);
    parser.process(app);
    QuitAfterFirstPaint quitter;
    if (parser.isSet(quitAfterPaint))
        app.installEventFilter(&quitter);

    frmSplash splash;
    splash.show();
    const QStringList steps{QStringLiteral("Starting Vantrel..."),
                            QStringLiteral("Reading the picture formats..."),
                            QStringLiteral("Preparing the drawing tools..."),
                            QStringLiteral("Opening the main window...")};
    const int count = static_cast<int>(steps.size());
    for (int i = 0; i < count; ++i) {
        splash.Progress(steps.at(i), (i + 1) * 12 / count, 12);
        QApplication::processEvents();
        // The splash shows while real work happens, and no longer.
        if (i == 1)
            QImageReader::supportedImageFormats();
    }

    QtModalUi ui;
    MDIForm1 frame(ui);
    ui.SetParent(&frame);
    frame.show();
    splash.close();

    const QStringList files = parser.positionalArguments();
    if (files.isEmpty())
        frame.ShowStartUp();
    else
        frame.OpenFiles(files);
    if (parser.isSet(quitAfterPaint) && quitter.Painted())
        return 0;
    return QApplication::exec();
}
