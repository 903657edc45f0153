#include "ui/frame/AppResources.h"
#include "ui/frame/MDIForm1.h"
#include "ui/frame/QtModalUi.h"
#include "ui/frame/frmSplash.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QImageReader>
#include <QThread>

int main(int argc, char** argv)
{
    // The URL checker's embedded browser shares its graphics context with the widgets.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
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
    parser.process(app);

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
        if (i == 1)
            QImageReader::supportedImageFormats();
        // Long enough to be read, short enough not to be in the way.
        QThread::msleep(250);
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
    return QApplication::exec();
}
