#include "core/document/ViewScale.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// The steps of common graphics editors.
constexpr std::array<double, 14> Steps = {0.05, 0.1, 0.125, 0.25, 1.0 / 3.0, 0.5, 2.0 / 3.0,
                                          1.0,  1.5, 2.0,   3.0,  4.0,       6.0, 8.0};
// Factors this close count as equal, so that fit values near a step do not stick.
constexpr double Tolerance = 1e-6;

double Clamp(double factor)
{
    return std::clamp(factor, ViewScale::Minimum, ViewScale::Maximum);
}

} // namespace

bool ViewScale::SetFactor(double Factor)
{
    if (!std::isfinite(Factor))
        return false;
    const double clamped = Clamp(Factor);
    if (clamped == m_factor)
        return false;
    m_factor = clamped;
    return true;
}

double ViewScale::StepIn(double Current)
{
    for (const double step : Steps) {
        if (step > Current + Tolerance)
            return step;
    }
    return Maximum;
}

double ViewScale::StepOut(double Current)
{
    for (auto it = Steps.rbegin(); it != Steps.rend(); ++it) {
        if (*it < Current - Tolerance)
            return *it;
    }
    return Minimum;
}

double ViewScale::Fit(const QSizeF& Content, const QSizeF& Viewport)
{
    if (Content.width() <= 0.0 || Content.height() <= 0.0 || Viewport.isEmpty())
        return 1.0;
    return Clamp(
        std::min(Viewport.width() / Content.width(), Viewport.height() / Content.height()));
}

std::int32_t ViewScale::DocumentReach(std::int32_t ScreenPixels) const
{
    return std::max<std::int32_t>(1,
                                  static_cast<std::int32_t>(std::lround(ScreenPixels / m_factor)));
}

int ViewScale::ScreenLength(double Document) const
{
    return static_cast<int>(std::lround(Document * m_factor));
}

QRect ViewScale::ToScreen(const QRect& Document) const
{
    if (IsIdentity())
        return Document;
    const int left = static_cast<int>(std::floor(Document.left() * m_factor)) - HandleMargin;
    const int top = static_cast<int>(std::floor(Document.top() * m_factor)) - HandleMargin;
    const int right = static_cast<int>(std::ceil((Document.right() + 1) * m_factor)) + HandleMargin;
    const int bottom =
        static_cast<int>(std::ceil((Document.bottom() + 1) * m_factor)) + HandleMargin;
    return QRect(QPoint(left, top), QPoint(right, bottom));
}

QRegion ViewScale::ToScreen(const QRegion& Document) const
{
    if (IsIdentity())
        return Document;
    QRegion screen;
    for (const QRect& r : Document)
        screen += ToScreen(r);
    return screen;
}

QRegion ViewScale::ToDocument(const QRegion& Screen) const
{
    if (IsIdentity())
        return Screen;
    const int margin = static_cast<int>(std::ceil(HandleMargin / m_factor)) + 1;
    QRegion document;
    for (const QRect& r : Screen) {
        const int left = static_cast<int>(std::floor(r.left() / m_factor)) - margin;
        const int top = static_cast<int>(std::floor(r.top() / m_factor)) - margin;
        const int right = static_cast<int>(std::ceil((r.right() + 1) / m_factor)) + margin;
        const int bottom = static_cast<int>(std::ceil((r.bottom() + 1) / m_factor)) + margin;
        document += QRect(QPoint(left, top), QPoint(right, bottom));
    }
    return document;
}

double ViewScale::AnchoredOffset(double Document, double NewFactor, double Anchor)
{
    return Document * NewFactor - Anchor;
}
