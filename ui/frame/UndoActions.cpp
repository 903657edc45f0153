#include "ui/frame/UndoActions.h"

#include "ui/canvas/ShapeCanvas.h"

#include <QAction>
#include <QIcon>
#include <QKeySequence>
#include <QMenu>
#include <QToolButton>
#include <QUndoGroup>

namespace {

QIcon ThemeIcon(const char* Name, const char* Fallback)
{
    return QIcon::fromTheme(QString::fromLatin1(Name),
                            QIcon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(Fallback))));
}

void Follow(QAction* Action, QToolButton& Button, const QString& Verb, const QString& StepName)
{
    const QString name = StepName.isEmpty() ? Verb : Verb + QLatin1Char(' ') + StepName;
    Action->setText(QLatin1Char('&') + name);
    Action->setToolTip(name);
    Button.setToolTip(name);
}

} // namespace

UndoActions::UndoActions(QMenu& Edit, QToolButton& UndoButton, QToolButton& RedoButton,
                         QObject* parent)
    : QObject(parent), m_group(new QUndoGroup(this)), m_undo(new QAction(&Edit)),
      m_redo(new QAction(&Edit))
{
    m_undo->setObjectName(QStringLiteral("EditUndo"));
    m_undo->setIcon(ThemeIcon("edit-undo", "undo"));
    m_undo->setShortcut(QKeySequence::Undo);
    m_redo->setObjectName(QStringLiteral("EditRedo"));
    m_redo->setIcon(ThemeIcon("edit-redo", "redo"));
    // Ctrl+Shift+Z and Ctrl+Y both redo.
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const QKeySequence& extra :
         {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)}) {
        if (!redoKeys.contains(extra))
            redoKeys.append(extra);
    }
    m_redo->setShortcuts(redoKeys);

    QAction* first = Edit.actions().isEmpty() ? nullptr : Edit.actions().constFirst();
    Edit.insertAction(first, m_undo);
    Edit.insertAction(first, m_redo);
    Edit.insertSeparator(first)->setObjectName(QStringLiteral("editundosplit"));

    UndoButton.setIcon(m_undo->icon());
    RedoButton.setIcon(m_redo->icon());
    connect(&UndoButton, &QToolButton::clicked, m_undo, &QAction::trigger);
    connect(&RedoButton, &QToolButton::clicked, m_redo, &QAction::trigger);
    connect(m_undo, &QAction::triggered, this, &UndoActions::UndoRequested);
    connect(m_redo, &QAction::triggered, this, &UndoActions::RedoRequested);

    const auto enable = [](QAction* action, QToolButton* button) {
        return [action, button](bool can) {
            action->setEnabled(can);
            button->setEnabled(can);
        };
    };
    connect(m_group, &QUndoGroup::canUndoChanged, this, enable(m_undo, &UndoButton));
    connect(m_group, &QUndoGroup::canRedoChanged, this, enable(m_redo, &RedoButton));
    connect(m_group, &QUndoGroup::undoTextChanged, this, [this, &UndoButton](const QString& text) {
        Follow(m_undo, UndoButton, QStringLiteral("Undo"), text);
    });
    connect(m_group, &QUndoGroup::redoTextChanged, this, [this, &RedoButton](const QString& text) {
        Follow(m_redo, RedoButton, QStringLiteral("Redo"), text);
    });
    Follow(m_undo, UndoButton, QStringLiteral("Undo"), QString());
    Follow(m_redo, RedoButton, QStringLiteral("Redo"), QString());
    enable(m_undo, &UndoButton)(false);
    enable(m_redo, &RedoButton)(false);
}

void UndoActions::Track(ShapeCanvas& Map)
{
    m_group->addStack(&Map.UndoStack());
}

void UndoActions::SetActive(ShapeCanvas* Map)
{
    m_group->setActiveStack(Map == nullptr ? nullptr : &Map->UndoStack());
}
