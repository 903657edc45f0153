#include "ui/frame/QuitAfterFirstPaint.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

bool QuitAfterFirstPaint::eventFilter(QObject* watched, QEvent* event)
{
    if (!m_quitting && event->type() == QEvent::Paint &&
        watched->objectName() == QLatin1String("TheCanvas")) {
        m_quitting = true;
        // Queued, so the paint itself still happens; exit, not quit, which would ask
        // each window to close (and a map window asks the user first).
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
    }
    return QObject::eventFilter(watched, event);
}
