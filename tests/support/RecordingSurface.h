#pragma once

#include "core/shape/ShapeSurface.h"

#include <QRegion>
#include <QStringList>

// A ShapeSurface that records every report in order as "inv(l,t,r,b)", "invrgn",
// "val(l,t,r,b)", "valrgn", "all" or "paint", and all the area it invalidated.
class RecordingSurface : public ShapeSurface
{
public:
    QStringList log;
    QRegion invalidated; // everything invalidated, validations ignored

    void InvalidateRect(const ShapeRect& r) override { add("inv" + Text(r), r.toQRect(), true); }
    void InvalidateRegion(const QRegion& region) override { add("invrgn", region, true); }
    void ValidateRect(const ShapeRect& r) override { add("val" + Text(r), r.toQRect(), false); }
    void ValidateRegion(const QRegion& region) override { add("valrgn", region, false); }
    void InvalidateAll() override { add("all", {}, false); }
    void RepaintNow() override { add("paint", {}, false); }
    void clear() { *this = RecordingSurface(); }

    static QString Text(const ShapeRect& r)
    {
        return QStringLiteral("(%1,%2,%3,%4)").arg(r.left).arg(r.top).arg(r.right).arg(r.bottom);
    }

private:
    void add(const QString& what, const QRegion& area, bool invalidates)
    {
        log << what;
        if (invalidates)
            invalidated += area;
    }
};
