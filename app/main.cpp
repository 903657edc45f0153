#include "core/forms/BrowserSandbox.h"
#include "core/forms/EditorCommandLine.h"
#include "core/interchange/RecoveryStore.h"
#include "ui/frame/AppResources.h"
#include "ui/frame/MDIForm1.h"
#include "ui/frame/QtModalUi.h"
#include "ui/frame/QuitAfterFirstPaint.h"
#include "ui/frame/ScreenFitter.h"
#include "ui/frame/frmSplash.h"

#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <unistd.h>

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // --help and --version print and quit, in a terminal with no display too.
    if (EditorCommandLine::OnlyPrints(arguments)) {
        QCoreApplication info(argc, argv);
        EditorCommandLine::Describe();
        EditorCommandLine().Process(info);
    }

    BrowserSandbox::Prepare(geteuid() == 0);
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    // Every window, whatever the scale factor, opens wholly on its screen.
    ScreenFitter fitter;
    app.installEventFilter(&fitter);
    AppResources::Load();
    EditorCommandLine::Describe();
    QApplication::setDesktopFileName(QStringLiteral("vantrel"));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/vantrel.svg")));

    EditorCommandLine commandLine;
    commandLine.Process(app);
    QuitAfterFirstPaint quitter;
    if (commandLine.QuitAfterFirstPaint())
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

    const bool recovered = frame.StartRecovery(RecoveryStore::DefaultFolder());
    const QStringList files = commandLine.Files();
    if (files.isEmpty()) {
        if (!recovered)
            frame.ShowStartUp();
    } else {
        frame.OpenFiles(files);
    }
    if (commandLine.QuitAfterFirstPaint() && quitter.Painted())
        return 0;
    return QApplication::exec();
}
