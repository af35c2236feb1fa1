#include "widgets/reports/engine/layout/ItemBox.h"

#include "widgets/reports/engine/layout/BandTree.h"
#include "widgets/reports/engine/template/TemplateItem.h"

#include <algorithm>

namespace LimeReport {

namespace {

// Edges that touch in the editor differ by less, 0.1 mm.
constexpr double Touch = 1;

bool overlapsAcross(const QRectF &left, const QRectF &right)
{
    return left.left() < right.right() - Touch && right.left() < left.right() - Touch;
}

void moveDown(ItemBoxes &boxes)
{
    std::vector<ItemBox *> order;
    for (ItemBox &box : boxes)
        order.push_back(&box);
    std::stable_sort(order.begin(), order.end(), [](const ItemBox *left, const ItemBox *right) {
        return left->start.top() < right->start.top();
    });
    for (std::size_t index = 0; index < order.size(); ++index) {
        ItemBox &box = *order[index];
        double shift = 0;
        for (std::size_t above = 0; above < index; ++above) {
            const ItemBox &other = *order[above];
            if (other.start.bottom() <= box.start.top() + Touch &&
                overlapsAcross(other.start, box.start))
                shift = std::max(shift, other.rect.bottom() - other.start.bottom());
        }
        box.rect.moveTop(box.start.top() + shift);
    }
}

void stretch(ItemBox &box, double bottom)
{
    if (box.rect.bottom() < bottom)
        box.rect.setBottom(bottom);
    for (ItemBox &child : box.children) {
        if (plainClass(*box.item) == QLatin1String("HLayout"))
            child.rect.setHeight(box.rect.height());
    }
}

} // namespace

double arrangeBand(ItemBoxes &boxes, const TemplateItem &band)
{
    const double told = std::max(0.0, band.geometry.height());
    if (!band.flag(QStringLiteral("autoHeight"), true)) {
        for (ItemBox &box : boxes)
            box.rect = box.start;
        return told;
    }
    const bool hasGrown = std::any_of(boxes.begin(), boxes.end(),
                                      [](const ItemBox &box) { return box.growth() > 0; });
    if (hasGrown)
        moveDown(boxes);
    double before = 0, after = 0;
    for (const ItemBox &box : boxes) {
        before = std::max(before, box.start.bottom());
        after = std::max(after, box.rect.bottom());
    }
    const double height = std::max(told, after + std::max(0.0, told - before));
    for (ItemBox &box : boxes) {
        if (height > told && box.item->flag(QStringLiteral("stretchToMaxHeight")))
            stretch(box, box.start.bottom() + height - told);
    }
    return height;
}

void arrangeLayout(ItemBox &layout)
{
    const bool isRow = plainClass(*layout.item) == QLatin1String("HLayout");
    std::stable_sort(layout.children.begin(), layout.children.end(),
                     [isRow](const ItemBox &left, const ItemBox &right) {
                         return isRow ? left.start.left() < right.start.left()
                                      : left.start.top() < right.start.top();
                     });
    double along = 0, across = layout.start.height();
    for (ItemBox &child : layout.children) {
        if (!child.isVisible)
            continue;
        child.rect.moveTo(isRow ? along : 0, isRow ? 0 : along);
        along += isRow ? child.rect.width() : child.rect.height();
        across = std::max(across, child.rect.height());
    }
    layout.rect.setHeight(isRow ? across : std::max(layout.start.height(), along));
    for (ItemBox &child : layout.children) {
        if (isRow)
            child.rect.setHeight(across);
        else
            child.rect.setWidth(layout.rect.width());
    }
}

} // namespace LimeReport
