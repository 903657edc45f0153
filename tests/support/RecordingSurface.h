#pragma once

#include "shape/ShapeSurface.h"

#include <QRegion>
#include <QString>
#include <QStringList>
#include <vector>

// A ShapeSurface that records every report in order, for checking the areas a shape
// or a document hands to the canvas.
class RecordingSurface : public ShapeSurface
{
public:
    enum class Kind {
        InvalidateRect,
        InvalidateRegion,
        ValidateRect,
        ValidateRegion,
        All,
        Repaint
    };

    struct Call
    {
        Kind kind;
        ShapeRect rect;
        QRegion region;
    };

    std::vector<Call> calls;

    void InvalidateRect(const ShapeRect& rect) override
    {
        calls.push_back({Kind::InvalidateRect, rect, {}});
    }
    void InvalidateRegion(const QRegion& region) override
    {
        calls.push_back({Kind::InvalidateRegion, {}, region});
    }
    void ValidateRect(const ShapeRect& rect) override
    {
        calls.push_back({Kind::ValidateRect, rect, {}});
    }
    void ValidateRegion(const QRegion& region) override
    {
        calls.push_back({Kind::ValidateRegion, {}, region});
    }
    void InvalidateAll() override { calls.push_back({Kind::All, {}, {}}); }
    void RepaintNow() override { calls.push_back({Kind::Repaint, {}, {}}); }

    void clear() { calls.clear(); }

    // One line per call, e.g. "inv(-2,-2,51,61)", "invrgn", "val(21,11,49,39)",
    // "valrgn", "all", "paint": the order of reports at a glance.
    QStringList log() const
    {
        QStringList lines;
        for (const Call& c : calls)
            lines << describe(c);
        return lines;
    }

    // The region an Invalidate/Validate call covers (a rectangle's inclusive edges).
    static QRegion area(const Call& c)
    {
        if (c.kind == Kind::InvalidateRect || c.kind == Kind::ValidateRect)
            return QRegion(c.rect.toQRect());
        return c.region;
    }

    // Everything invalidated over all calls, validations ignored.
    QRegion everInvalidated() const
    {
        QRegion all;
        for (const Call& c : calls) {
            if (c.kind == Kind::InvalidateRect || c.kind == Kind::InvalidateRegion)
                all += area(c);
        }
        return all;
    }

private:
    static QString rectText(const ShapeRect& r)
    {
        return QStringLiteral("(%1,%2,%3,%4)").arg(r.left).arg(r.top).arg(r.right).arg(r.bottom);
    }
    static QString describe(const Call& c)
    {
        switch (c.kind) {
        case Kind::InvalidateRect:
            return QStringLiteral("inv") + rectText(c.rect);
        case Kind::InvalidateRegion:
            return QStringLiteral("invrgn");
        case Kind::ValidateRect:
            return QStringLiteral("val") + rectText(c.rect);
        case Kind::ValidateRegion:
            return QStringLiteral("valrgn");
        case Kind::All:
            return QStringLiteral("all");
        case Kind::Repaint:
            return QStringLiteral("paint");
        }
        return {};
    }
};
