#pragma once

#include <QList>
#include <QPointer>
#include <QStringList>

class QAction;
class QObject;
class QWidget;

// The frame's commands that need an open map: toolbar buttons, single menu items and
// whole menus, found by object name. A whole menu is disabled with every item in it,
// so a disabled command's shortcut does nothing either.
class MapCommandSet
{
public:
    static const QStringList& ButtonNames();
    static const QStringList& MenuNames();

    // Collects the controls below Frame; names not found are listed by Missing().
    explicit MapCommandSet(QWidget& Frame);

    void SetEnabled(bool Enabled);
    QStringList Missing() const { return m_missing; }

private:
    QList<QPointer<QWidget>> m_widgets;
    QList<QPointer<QAction>> m_actions;
    QStringList m_missing;
};
