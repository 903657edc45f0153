#include "ui/frame/MapCaption.h"

#include "ui/canvas/ShapeCanvas.h"

#include <QEvent>
#include <QMdiSubWindow>

MapCaption::MapCaption(ShapeCanvas& Map, std::function<void()> Changed)
    : QObject(&Map), m_map(Map), m_changed(std::move(Changed))
{
    Map.installEventFilter(this);
}

void MapCaption::Attach(QMdiSubWindow& Window)
{
    m_window = &Window;
    Update();
}

bool MapCaption::eventFilter(QObject* Watched, QEvent* Event)
{
    if (Watched == &m_map &&
        (Event->type() == QEvent::WindowTitleChange || Event->type() == QEvent::ModifiedChange))
        Update();
    return QObject::eventFilter(Watched, Event);
}

void MapCaption::Update()
{
    if (m_window == nullptr)
        return;
    m_window->setWindowTitle(Marked(m_map.windowTitle()));
    m_window->setWindowModified(m_map.isWindowModified());
    if (m_changed)
        m_changed();
}
