#include "ui/frame/MapCommandSet.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QWidget>

const QStringList& MapCommandSet::ButtonNames()
{
    static const QStringList names{QStringLiteral("btnSave"),  QStringLiteral("bntSaveAs"),
                                   QStringLiteral("btnCut"),   QStringLiteral("btnCopy"),
                                   QStringLiteral("btnPaste"), QStringLiteral("btnDelete"),
                                   QStringLiteral("btnProp"),  QStringLiteral("btnGen"),
                                   QStringLiteral("btnTest"),  QStringLiteral("btnColors")};
    return names;
}

const QStringList& MapCommandSet::MenuNames()
{
    static const QStringList names{QStringLiteral("menuSaveMap"),  QStringLiteral("menuSaveMapAs"),
                                   QStringLiteral("generatecode"), QStringLiteral("mnuTestMap"),
                                   QStringLiteral("edit"),         QStringLiteral("view"),
                                   QStringLiteral("options"),      QStringLiteral("tools")};
    return names;
}

namespace {

void AddMenu(QMenu* menu, QList<QPointer<QAction>>& actions)
{
    actions.append(menu->menuAction());
    for (QAction* action : menu->actions()) {
        if (action->isSeparator())
            continue;
        if (action->menu() != nullptr)
            AddMenu(action->menu(), actions);
        else
            actions.append(action);
    }
}

} // namespace

MapCommandSet::MapCommandSet(QWidget& Frame)
{
    for (const QString& name : ButtonNames()) {
        if (auto* button = Frame.findChild<QAbstractButton*>(name))
            m_widgets.append(button);
        else
            m_missing.append(name);
    }
    for (const QString& name : MenuNames()) {
        if (auto* menu = Frame.findChild<QMenu*>(name))
            AddMenu(menu, m_actions);
        else if (auto* action = Frame.findChild<QAction*>(name))
            m_actions.append(action);
        else
            m_missing.append(name);
    }
}

void MapCommandSet::SetEnabled(bool Enabled)
{
    for (const QPointer<QWidget>& widget : std::as_const(m_widgets)) {
        if (widget)
            widget->setEnabled(Enabled);
    }
    for (const QPointer<QAction>& action : std::as_const(m_actions)) {
        if (action)
            action->setEnabled(Enabled);
    }
}
