#include "core/document/CanvasLayout.h"

namespace {
constexpr int Threshold = 50;
constexpr int Margin = 16;
} // namespace

CanvasLayout CanvasLayout::Resized(const CanvasLayout& Current, int InnerWidth, int InnerHeight)
{
    CanvasLayout next = Current;
    if (InnerHeight >= Threshold) {
        next.VScroll1.setHeight(InnerHeight - Current.BntScrollEnd.height());
        next.HScroll1.moveTop(InnerHeight - Current.HScroll1.height());
        next.HoldPicbox.setHeight(InnerHeight - Current.HScroll1.height() - Margin);
        next.BntScrollEnd.moveTop(InnerHeight - Current.BntScrollEnd.height());
    }
    if (InnerWidth >= Threshold) {
        next.BntScrollEnd.moveLeft(InnerWidth - Current.BntScrollEnd.width());
        next.VScroll1.moveLeft(InnerWidth - Current.VScroll1.width());
        next.HoldPicbox.setWidth(InnerWidth - Current.VScroll1.width() - Margin);
        next.HScroll1.setWidth(InnerWidth - Current.BntScrollEnd.width());
    }
    next.HoldImageTop = InnerHeight + 100;
    return next;
}
