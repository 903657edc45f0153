#include "ui/frame/ViewCommands.h"

#include "ui/canvas/ShapeCanvas.h"
#include "ui/frame/MDIForm1.h"
#include "ui/frame/ShapesPanel.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

namespace {

void Add(QMenu& View, MDIForm1& Frame, const char* Name, const QString& Caption, const char* Icon,
         const QList<QKeySequence>& Keys, void (ShapeCanvas::*Command)())
{
    QAction* action = View.addAction(Caption);
    action->setObjectName(QString::fromLatin1(Name));
    if (Icon != nullptr)
        action->setIcon(QIcon(QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(Icon))));
    action->setShortcuts(Keys);
    QObject::connect(action, &QAction::triggered, &Frame, [&Frame, Command] {
        if (ShapeCanvas* map = Frame.ActiveMapWindow())
            (map->*Command)();
    });
}

} // namespace

void ViewCommands::AddTo(QMenu& View, MDIForm1& Frame)
{
    View.addSeparator()->setObjectName(QStringLiteral("viewscalesplit"));
    Add(View, Frame, "ViewCloser", QStringLiteral("Zoom View &In"), "zoomin",
        {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)}, &ShapeCanvas::ZoomViewIn);
    Add(View, Frame, "ViewFarther", QStringLiteral("Zoom View &Out"), "zoomout",
        {QKeySequence::ZoomOut}, &ShapeCanvas::ZoomViewOut);
    Add(View, Frame, "ViewActualSize", QStringLiteral("&Actual Size"), "zoomactual",
        {QKeySequence(Qt::CTRL | Qt::Key_0)}, &ShapeCanvas::ActualSize);
    Add(View, Frame, "FitToWindow", QStringLiteral("&Fit to Window"), "zoomfit",
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F)}, &ShapeCanvas::FitToWindow);
    View.addSeparator()->setObjectName(QStringLiteral("viewpanelsplit"));
    QAction* panel = Frame.ShapesDock().toggleViewAction();
    panel->setText(QStringLiteral("&Shapes"));
    panel->setObjectName(QStringLiteral("ShapesPanel"));
    View.addAction(panel);
}
