#include "ui/dialogs/DialogPlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

void DialogPlacement::CentreOnScreen(QWidget& Dialog)
{
    const QWidget* parent = Dialog.parentWidget();
    QScreen* screen = parent ? parent->screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    const QRect area = screen->geometry();
    const QSize size = Dialog.frameGeometry().size();
    Dialog.move(area.x() + (area.width() - size.width()) / 2,
                area.y() + (area.height() - size.height()) / 2);
}
