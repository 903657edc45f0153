#include "ui/frame/RecentMapsMenu.h"

#include "core/base/ModalUi.h"
#include "ui/frame/MDIForm1.h"

#include <QDir>
#include <QFileInfo>
#include <QIcon>
#include <QMenu>

RecentMapsMenu::RecentMapsMenu(QMenu& File, QAction* Before, MDIForm1& Frame)
    : QObject(&Frame), m_frame(Frame), m_recent(m_settings),
      m_menu(new QMenu(QStringLiteral("Open &Recent"), &File))
{
    m_menu->setObjectName(QStringLiteral("OpenRecent"));
    m_menu->menuAction()->setObjectName(QStringLiteral("OpenRecentMenu"));
    m_menu->menuAction()->setIcon(QIcon(QStringLiteral(":/icons/recent.svg")));
    // The whole path of an entry, when the pointer rests on it.
    m_menu->setToolTipsVisible(true);
    File.insertMenu(Before, m_menu);
    connect(m_menu, &QMenu::aboutToShow, this, &RecentMapsMenu::Fill);
    Fill();
}

void RecentMapsMenu::Add(const QString& Path)
{
    m_recent.Add(Path);
    Fill();
}

void RecentMapsMenu::Fill()
{
    m_menu->clear();
    const QStringList paths = m_recent.Paths();
    const QStringList labels = RecentFiles::Labels(paths, QDir::homePath());
    int number = 1;
    for (const QString& path : paths) {
        // An ampersand in a file name is text, not an access key.
        QString label = labels.at(number - 1);
        label.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* action = m_menu->addAction(QStringLiteral("&%1 %2").arg(number).arg(label));
        ++number;
        action->setToolTip(QDir::toNativeSeparators(path));
        action->setStatusTip(QDir::toNativeSeparators(path));
        action->setData(path);
        connect(action, &QAction::triggered, this, [this, path] { Open(path); });
    }
    if (paths.isEmpty()) {
        m_menu->addAction(QStringLiteral("(none)"))->setEnabled(false);
        return;
    }
    m_menu->addSeparator();
    QAction* clear = m_menu->addAction(QStringLiteral("&Clear List"));
    clear->setObjectName(QStringLiteral("ClearRecent"));
    connect(clear, &QAction::triggered, this, [this] {
        m_recent.Clear();
        Fill();
    });
}

void RecentMapsMenu::Open(const QString& Path)
{
    if (!QFileInfo::exists(Path)) {
        m_recent.Remove(Path);
        Fill();
        m_frame.Dialogs().Message(RecentFiles::MissingMessage(Path), ModalUi::Icon::Critical);
        return;
    }
    m_frame.OpenMapFile(Path);
}
