#include "widgets/reports/engine/pages/PagePainter.h"

#include "nodes/values/Quality.h"
#include "widgets/reports/engine/items/ItemPainter.h"
#include "widgets/reports/engine/pages/PictureCache.h"
#include "widgets/reports/engine/pages/Placeholder.h"
#include "widgets/reports/engine/pages/ShapePainting.h"
#include "widgets/reports/engine/text/TextBlock.h"
#include "widgets/reports/engine/text/TextStyle.h"

#include <QDataStream>
#include <QPainter>

namespace LimeReport {

namespace {

constexpr double UnitsPerMillimetre = 10;

void collect(const TemplateItem &item, std::vector<const TemplateItem *> &items)
{
    items[std::size_t(item.number)] = &item;
    for (const TemplateItem &child : item.children)
        collect(child, items);
}

} // namespace

PagePainter::PagePainter(ReportTemplatePtr report)
    : m_report(std::move(report)),
      m_items(std::size_t(m_report->itemCount)),
      m_styles(m_items.size()),
      m_pictures(std::make_unique<PictureCache>())
{
    for (const TemplatePage &page : m_report->pages)
        collect(page.item, m_items);
}

PagePainter::~PagePainter() = default;

void PagePainter::paint(QPainter &painter, const PrintedPage &page, const QRectF &exposed)
{
    for (const PageItem &item : page.items) {
        // Lines have no width or height, and pens stand out over their edges.
        if (item.rect.adjusted(-20, -20, 20, 20).intersects(exposed))
            paintItem(painter, item);
    }
}

void PagePainter::paintItem(QPainter &painter, const PageItem &item)
{
    const TemplateItem *source = item.style >= 0 && item.style < int(m_items.size())
                                     ? m_items[std::size_t(item.style)]
                                     : nullptr;
    if (!source)
        return;
    switch (item.kind) {
    case PageItem::Fill:
        if (item.color.isValid())
            painter.fillRect(item.rect, item.color);
        break;
    case PageItem::Text:
        paintText(painter, item, *source);
        break;
    case PageItem::Shape:
        paintShape(painter, item.rect, *source);
        break;
    case PageItem::Image:
        paintImage(painter, item, *source);
        break;
    case PageItem::Drawn:
        paintDrawn(painter, item, *source);
        break;
    case PageItem::Placeholder:
        drawPlaceholder(painter, item.rect, UnitsPerMillimetre, item.text);
        return;
    }
    paintBorders(painter, item.rect, *source);
}

const TextStyle &PagePainter::textStyle(const TemplateItem &source)
{
    auto &style = m_styles[std::size_t(source.number)];
    if (!style)
        style = std::make_unique<TextStyle>(source);
    return *style;
}

void PagePainter::paintText(QPainter &painter, const PageItem &item, const TemplateItem &source)
{
    const TextStyle &style = textStyle(source);
    if (style.background.isValid())
        painter.fillRect(item.rect, style.background);
    // A dash for "no value" is no value that could be mistaken for a good one.
    const bool isMarked = item.text != QStringLiteral("—");
    if (item.quality != PageItem::Good)
        paintQuality(painter, item.rect, Nodes::Quality(item.quality), isMarked);
    if (!item.text.isEmpty())
        TextBlock(style, item.text, item.rect.size()).paint(painter, item.rect);
}

void PagePainter::paintImage(QPainter &painter, const PageItem &item, const TemplateItem &source)
{
    const bool isOwn = !item.data.isEmpty();
    const QByteArray bytes =
        isOwn ? item.data : source.properties.value(QStringLiteral("image")).toByteArray();
    QString error;
    const QImage image = m_pictures->picture(bytes, error);
    if (image.isNull())
        drawPlaceholder(painter, item.rect, UnitsPerMillimetre,
                        QStringLiteral("Не показано: %1 (%2)").arg(source.name, error));
    else
        paintPicture(painter, item.rect, image, source);
}

void PagePainter::paintDrawn(QPainter &painter, const PageItem &item, const TemplateItem &source)
{
    QVariantMap resolved;
    QDataStream in(item.data);
    in >> resolved;
    if (const ItemPainter *drawing = itemPainter(source.className))
        drawing->paint(painter, item.rect, UnitsPerMillimetre, resolved);
}

} // namespace LimeReport
