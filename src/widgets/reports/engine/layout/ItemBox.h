#pragma once

#include "widgets/reports/engine/pages/PageItem.h"

#include <vector>

namespace LimeReport {

struct TemplateItem;

/// An item of a band while the band is laid out.
struct ItemBox
{
    const TemplateItem *item = nullptr;
    PageItem page;
    /// As in the template, relative to the parent.
    QRectF start;
    /// Where it comes to stand.
    QRectF rect;
    bool isVisible = true;
    /// Shows something.
    bool isFilled = true;
    /// Of HLayout and VLayout.
    std::vector<ItemBox> children;

    double growth() const { return rect.height() - start.height(); }
};

using ItemBoxes = std::vector<ItemBox>;

/// Boxes below one that has grown move down, the band keeps the space under its lowest box, and
/// boxes with `stretchToMaxHeight` grow with it. In a band that does not grow none does. Returns
/// the band's height.
double arrangeBand(ItemBoxes &boxes, const TemplateItem &band);
/// Puts the visible children of a layout side by side or one below the other; the layout grows with
/// them.
void arrangeLayout(ItemBox &layout);

} // namespace LimeReport
