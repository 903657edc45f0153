#include "ui/frame/QuitAfterFirstPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

bool QuitAfterFirstPaint::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_quitting && event->type() == QEvent::Paint &&
        watched->objectName() == QLatin1String("TheCanvas")) {
        m_quitting = true;
        // Queued: the paint itself still happens.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    }
    return QObject::eventFilter(watched, event);
}
