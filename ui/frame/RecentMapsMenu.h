#pragma once

#include "core/forms/RecentFiles.h"

#include <QObject>
#include <QSettings>

class MDIForm1;
class QAction;
class QMenu;

// File > Open Recent: the last maps opened or saved, filled each time it opens. A map
// that has gone since is taken off the list with a message.
class RecentMapsMenu : public QObject
{
    Q_OBJECT
public:
    // Inserts the submenu into File before Before.
    RecentMapsMenu(QMenu& File, QAction* Before, MDIForm1& Frame);

    void Add(const QString& Path);
    QMenu& Menu() const { return *m_menu; }
    RecentFiles& Files() { return m_recent; }

private:
    MDIForm1& m_frame;
    QSettings m_settings;
    RecentFiles m_recent;
    QMenu* m_menu;

    void Fill();
    void Open(const QString& Path);
};
