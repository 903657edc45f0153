#include "core/forms/ScreenFit.h"

#include <QtGlobal>

namespace {

// The start that keeps [Start, Start + Length) inside [Low, High), the start winning when
// the length is larger than the room.
int Clamp(int Start, int Length, int Low, int High)
{
    return qMax(Low, qMin(Start, High - Length));
}

} // namespace

QRect ScreenFit::Place(const QRect& Available, const QRect& Window, const QMargins& Decoration,
                       const QSize& Minimum)
{
    const int roomWidth = Available.width() - Decoration.left() - Decoration.right();
    const int roomHeight = Available.height() - Decoration.top() - Decoration.bottom();
    const QSize size(qMax(Minimum.width(), qMin(Window.width(), roomWidth)),
                     qMax(Minimum.height(), qMin(Window.height(), roomHeight)));

    // The outer rectangle shrinks about its centre, so a centred dialog stays centred.
    QRect outer = Window.marginsAdded(Decoration);
    const QPoint centre = outer.center();
    outer.setSize(QSize(size.width() + Decoration.left() + Decoration.right(),
                        size.height() + Decoration.top() + Decoration.bottom()));
    outer.moveCenter(centre);
    outer.moveTo(
        Clamp(outer.x(), outer.width(), Available.left(), Available.left() + Available.width()),
        Clamp(outer.y(), outer.height(), Available.top(), Available.top() + Available.height()));
    return outer.marginsRemoved(Decoration);
}

bool ScreenFit::Fits(const QRect& Available, const QRect& Window, const QMargins& Decoration)
{
    return Available.contains(Window.marginsAdded(Decoration));
}
