#include "widgets/reports/engine/layout/BandSplit.h"

#include "widgets/reports/engine/template/TemplateItem.h"
#include "widgets/reports/engine/text/TextBlock.h"
#include "widgets/reports/engine/text/TextStyle.h"

#include <algorithm>

namespace LimeReport {

namespace {

// Thinner boxes are lines.
constexpr double Thin = 10;

using Parts = std::pair<BandImage, BandImage>;

void below(BandImage &lower, PageItem item, double cut)
{
    item.rect.moveTop(std::max(0.0, item.rect.top() - cut));
    lower.items.append(item);
}

void cutAnywhere(const PageItem &item, double cut, Parts &parts)
{
    PageItem upper = item, lower = item;
    upper.rect.setBottom(cut);
    lower.rect.setTop(cut);
    parts.first.items.append(upper);
    below(parts.second, lower, cut);
}

// False when no line stands above the cut.
bool cutText(const PageItem &item, double cut, const TextStyle &style, Parts &parts)
{
    if (style.angle != 0)
        return false;
    const TextBlock block(style, item.text, item.rect.size());
    const int fitting = block.charactersWithin(cut - item.rect.top());
    if (fitting <= 0)
        return false;
    PageItem upper = item, lower = item;
    upper.rect.setBottom(cut);
    upper.text = item.text.left(fitting);
    lower.text = item.text.mid(fitting);
    lower.rect.setTop(cut);
    const double needed = TextBlock(style, lower.text, lower.rect.size()).extent();
    lower.rect.setHeight(std::max(lower.rect.height(), style.isAutoHeight ? needed : 0.0));
    parts.first.items.append(upper);
    below(parts.second, lower, cut);
    return true;
}

void divide(const PageItem &item, double cut, const BandSplit::Styles &styles, Parts &parts)
{
    const bool isUprightLine = item.kind == PageItem::Shape && item.rect.width() < Thin;
    if (item.rect.bottom() <= cut)
        parts.first.items.append(item);
    else if (item.rect.top() >= cut)
        below(parts.second, item, cut);
    else if (item.kind == PageItem::Fill || isUprightLine)
        cutAnywhere(item, cut, parts);
    else if (item.kind != PageItem::Text || item.late >= 0 ||
             !cutText(item, cut, styles(item.style), parts))
        below(parts.second, item, cut);
}

bool showsAnything(const BandImage &image)
{
    return std::any_of(image.items.begin(), image.items.end(),
                       [](const PageItem &item) { return item.kind != PageItem::Fill; });
}

void squeeze(const BandImage &image, double cut, Parts &parts)
{
    parts = Parts();
    for (PageItem item : image.items) {
        if (item.rect.top() >= cut) {
            below(parts.second, item, cut);
            continue;
        }
        item.rect.setBottom(std::min(item.rect.bottom(), cut));
        parts.first.items.append(item);
    }
}

} // namespace

Parts BandSplit::split(const BandImage &image, double height, const Styles &styles, bool isForced)
{
    Parts parts;
    for (const PageItem &item : image.items)
        divide(item, height, styles, parts);
    if (!showsAnything(parts.first)) {
        parts.first.items.clear();
        if (isForced)
            squeeze(image, height, parts);
    }
    parts.first.band = parts.second.band = image.band;
    parts.first.height = height;
    for (const PageItem &item : parts.second.items)
        parts.second.height = std::max(parts.second.height, item.rect.bottom());
    return parts;
}

} // namespace LimeReport
