#pragma once

#include <QObject>

class QAction;
class QMenu;
class QToolButton;
class QUndoGroup;
class ShapeCanvas;

// "&Undo" and "&Redo" at the top of the Edit menu and on the tool strip, acting on the
// active map's history through a QUndoGroup; their text names the step ("Undo Move
// Shape") and they are disabled when there is nothing to undo or redo.
class UndoActions : public QObject
{
    Q_OBJECT
public:
    UndoActions(QMenu& Edit, QToolButton& UndoButton, QToolButton& RedoButton,
                QObject* parent = nullptr);

    QAction* UndoAction() const { return m_undo; }
    QAction* RedoAction() const { return m_redo; }
    QUndoGroup& Group() const { return *m_group; }
    // Adds Map's history to the group (it leaves when the map is destroyed).
    void Track(ShapeCanvas& Map);
    // The map the actions act on; null when none is open.
    void SetActive(ShapeCanvas* Map);

signals:
    void UndoRequested();
    void RedoRequested();

private:
    QUndoGroup* m_group;
    QAction* m_undo;
    QAction* m_redo;
};
