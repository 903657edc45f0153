#pragma once

#include <QPointF>
#include <QRect>
#include <QRegion>
#include <QSizeF>
#include <cstdint>

// How much closer or farther the user looks at a map, apart from the map's own zoom
// level: a factor between the surface the shapes live on (document pixels) and the
// widget that shows it (screen pixels). Looking never changes a stored coordinate.
// At 1.0 every mapping is the identity.
class ViewScale
{
public:
    static constexpr double Minimum = 0.05;
    static constexpr double Maximum = 8.0;
    // Screen pixels around a drawn handle that a repaint must cover at any factor.
    static constexpr int HandleMargin = 6;

    double Factor() const { return m_factor; }
    bool IsIdentity() const { return m_factor == 1.0; }
    // Clamped to Minimum..Maximum; false when the factor stays as it was.
    bool SetFactor(double Factor);

    // The next standard step closer or farther (100 %, 150 %, 200 %, ...), within the
    // limits; the current factor at a limit.
    static double StepIn(double Current);
    static double StepOut(double Current);
    // The largest factor that shows Content wholly inside Viewport, within the limits.
    static double Fit(const QSizeF& Content, const QSizeF& Viewport);

    // A reach of ScreenPixels on screen in document pixels, at least one.
    std::int32_t DocumentReach(std::int32_t ScreenPixels) const;

    QPointF ToScreen(const QPointF& Document) const { return Document * m_factor; }
    QPointF ToDocument(const QPointF& Screen) const { return Screen / m_factor; }
    // A length in document pixels shown on screen, rounded to whole pixels.
    int ScreenLength(double Document) const;
    // Every screen pixel that shows part of the document rectangle (edges inclusive),
    // with room for the handles, which keep their screen size.
    QRect ToScreen(const QRect& Document) const;
    QRegion ToScreen(const QRegion& Document) const;
    // Every document pixel shown in the screen region, with room for the handles of
    // shapes that lie just outside it.
    QRegion ToDocument(const QRegion& Screen) const;

    // The scroll offset that keeps document coordinate Document at Anchor pixels from
    // the viewport's edge when shown at factor NewFactor.
    static double AnchoredOffset(double Document, double NewFactor, double Anchor);

private:
    double m_factor = 1.0;
};
