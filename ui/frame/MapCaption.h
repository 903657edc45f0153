#pragma once

#include <QObject>
#include <functional>

class QMdiSubWindow;
class ShapeCanvas;

// Keeps a map's window frame titled with the map's caption and a "*" while the map is
// modified (Qt's "[*]" placeholder), leaving the map's own caption plain, and tells the
// frame when either changes.
class MapCaption : public QObject
{
    Q_OBJECT
public:
    // Install before the map goes into its sub-window, so that this filter has the
    // last word over the sub-window's own.
    MapCaption(ShapeCanvas& Map, std::function<void()> Changed);
    void Attach(QMdiSubWindow& Window);

    static QString Marked(const QString& Caption) { return Caption + QStringLiteral("[*]"); }

protected:
    bool eventFilter(QObject* Watched, QEvent* Event) override;

private:
    ShapeCanvas& m_map;
    QMdiSubWindow* m_window = nullptr;
    std::function<void()> m_changed;

    void Update();
};
