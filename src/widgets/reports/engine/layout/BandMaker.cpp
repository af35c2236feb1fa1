#include "widgets/reports/engine/layout/BandMaker.h"

#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/items/ItemPainter.h"
#include "widgets/reports/engine/layout/BandTree.h"
#include "widgets/reports/engine/layout/FieldImage.h"
#include "widgets/reports/engine/layout/ItemContent.h"
#include "widgets/reports/engine/text/TextBlock.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>

namespace LimeReport {

namespace {

bool tellsPage(const TemplateItem &item)
{
    if (item.text(QStringLiteral("content")).contains(QLatin1String("#PAGE")))
        return true;
    return std::any_of(item.children.begin(), item.children.end(), tellsPage);
}

bool hasFrame(const TemplateItem &item)
{
    return item.integer(QStringLiteral("borders")) != 0;
}

ItemBox *named(ItemBoxes &boxes, const QString &name)
{
    for (ItemBox &box : boxes) {
        if (box.item->name == name)
            return &box;
    }
    return nullptr;
}

} // namespace

BandMaker::BandMaker(const ReportTemplate &report, ReportScope &scope, ContentExpander &expander,
                     LateTexts &late)
    : m_report(report),
      m_scope(scope),
      m_expander(expander),
      m_late(late),
      m_styles(std::size_t(report.itemCount)),
      m_dependsOnPage(std::size_t(report.itemCount), -1)
{
}

bool BandMaker::dependsOnPage(const TemplateItem &band)
{
    signed char &known = m_dependsOnPage[std::size_t(band.number)];
    if (known < 0)
        known = tellsPage(band) ? 1 : 0;
    return known == 1;
}

BandImage BandMaker::make(const TemplateItem &band, const ContentPlace &place,
                          const QColor &background)
{
    m_scope.setPlace(place);
    m_position.reset();
    ItemBoxes boxes;
    boxes.reserve(band.children.size());
    for (const TemplateItem &item : band.children)
        boxes.push_back(box(item));
    follow(boxes);
    for (ItemBox &one : boxes)
        grow(one);

    BandImage image;
    image.band = &band;
    image.height = arrangeBand(boxes, band);
    image.isEmpty = !boxes.empty() &&
                    std::none_of(boxes.begin(), boxes.end(),
                                 [](const ItemBox &one) { return one.isVisible && one.isFilled; });
    emitBand(band, background, image);
    for (const ItemBox &one : boxes)
        emitBox(one, QPointF(), image);
    return image;
}

BandImage BandMaker::makeLoose(const TemplateItem &item, const ContentPlace &place)
{
    m_scope.setPlace(place);
    m_position.reset();
    ItemBox made = box(item);
    grow(made);
    BandImage image;
    image.height = made.rect.height();
    emitBox(made, QPointF(), image);
    return image;
}

ItemBox BandMaker::box(const TemplateItem &item)
{
    ItemBox made;
    made.item = &item;
    made.start = item.geometry;
    made.rect = item.geometry;
    made.page.style = item.number;
    made.isVisible = item.flag(QStringLiteral("itemVisible"), true);
    ContentPlace place = m_scope.place();
    place.item = item.name;
    m_scope.setPlace(place);
    const QString kind = plainClass(item);
    if (kind == QLatin1String("TextItem"))
        fillText(made);
    else if (kind == QLatin1String("ShapeItem"))
        made.page.kind = PageItem::Shape;
    else if (kind == QLatin1String("ImageItem"))
        fillImage(made);
    else if (kind == QLatin1String("HLayout") || kind == QLatin1String("VLayout"))
        fillLayout(made);
    else if (itemPainter(item.className))
        fillDrawn(made);
    else
        fillUnknown(made);
    return made;
}

const LateTexts::Place &BandMaker::position()
{
    if (!m_position)
        m_position = std::make_shared<const ReportScope::Position>(m_scope.position());
    return m_position;
}

void BandMaker::fillText(ItemBox &box)
{
    box.page.kind = PageItem::Text;
    if (!box.isVisible)
        return;
    const ContentExpander::Expanded expanded = expandItem(*box.item, m_scope, m_expander);
    box.page.text = expanded.text;
    box.page.quality = quint8(expanded.quality);
    if (expanded.needsSecondPass)
        box.page.late = m_late.add(*box.item, position());
    const bool isBlank = expanded.text.trimmed().isEmpty();
    box.isFilled = !isBlank || hasFrame(*box.item) || style(*box.item).background.isValid();
    if (isBlank && box.item->flag(QStringLiteral("hideIfEmpty")))
        box.isVisible = false;
}

void BandMaker::fillImage(ItemBox &box)
{
    box.page.kind = PageItem::Image;
    const TemplateItem &item = *box.item;
    const bool isOwn = !item.properties.value(QStringLiteral("image")).toByteArray().isEmpty();
    if (isOwn && item.text(QStringLiteral("field")).isEmpty())
        return;
    const FieldImage field(item, m_report.directory, m_scope);
    box.page.data = field.bytes();
    if (!field.error().isEmpty())
        fail(box, field.error(), field.told());
    else if (box.page.data.isEmpty())
        box.isVisible = box.isFilled = false; // a row without a picture
}

void BandMaker::fillDrawn(ItemBox &box)
{
    box.page.kind = PageItem::Drawn;
    const QVariantMap resolved =
        itemPainter(box.item->className)->resolve(box.item->properties, m_scope, m_expander);
    const QString error = resolved.value(QLatin1String(itemError)).toString();
    if (!error.isEmpty()) {
        box.page.kind = PageItem::Placeholder;
        box.page.text = QStringLiteral("Не показано: %1 (%2)").arg(box.item->name, error);
        return;
    }
    QDataStream out(&box.page.data, QIODevice::WriteOnly);
    out << resolved;
}

void BandMaker::fillLayout(ItemBox &box)
{
    box.page.kind = PageItem::Fill;
    for (const TemplateItem &item : box.item->children)
        box.children.push_back(this->box(item));
    box.isFilled = std::any_of(box.children.begin(), box.children.end(), [](const ItemBox &child) {
        return child.isVisible && child.isFilled;
    });
}

void BandMaker::fillUnknown(ItemBox &box)
{
    fail(box,
         QStringLiteral("элементы вида %1 здесь не печатаются")
             .arg(box.item->className.isEmpty() ? QStringLiteral("\"\"") : box.item->className),
         QStringLiteral("вид %1 неизвестен").arg(plainClass(*box.item)));
}

void BandMaker::fail(ItemBox &box, const QString &error, const QString &told)
{
    box.page.kind = PageItem::Placeholder;
    box.page.text = QStringLiteral("Не показано: %1 (%2)").arg(box.item->name, told);
    m_scope.errors().add(QStringLiteral("полоса «%1», элемент «%2»: %3")
                             .arg(m_scope.place().band, box.item->name, error));
}

const TextStyle &BandMaker::style(const TemplateItem &item)
{
    auto &made = m_styles[std::size_t(item.number)];
    if (!made)
        made = std::make_unique<TextStyle>(item);
    return *made;
}

// What does not fit into an item goes on in the one that `followTo` names.
void BandMaker::follow(ItemBoxes &boxes)
{
    for (ItemBox &box : boxes) {
        const QString next = box.item->text(QStringLiteral("followTo"));
        if (next.isEmpty() || box.page.kind != PageItem::Text)
            continue;
        ItemBox *target = named(boxes, next);
        if (!target || target == &box || target->page.kind != PageItem::Text) {
            m_scope.errors().add(
                QStringLiteral("полоса «%1», элемент «%2»: followTo называет не другой текст: «%3»")
                    .arg(m_scope.place().band, box.item->name, next));
            continue;
        }
        const TextBlock block(style(*box.item), box.page.text, box.rect.size());
        const int fitting = block.charactersWithin(box.rect.height());
        target->page.text = box.page.text.mid(fitting);
        target->page.late = -1;
        target->isFilled = !target->page.text.isEmpty();
        target->isVisible = target->isFilled || !target->item->flag(QStringLiteral("hideIfEmpty"));
        box.page.text.truncate(fitting);
    }
}

void BandMaker::grow(ItemBox &box)
{
    for (ItemBox &child : box.children)
        grow(child);
    if (!box.children.empty()) {
        arrangeLayout(box);
    } else if (box.page.kind == PageItem::Text && box.isVisible) {
        const TextStyle &look = style(*box.item);
        if (!look.isAutoHeight || look.isUpright() || box.page.text.isEmpty())
            return;
        const double needed = TextBlock(look, box.page.text, box.rect.size()).extent();
        box.rect.setHeight(std::max(box.rect.height(), needed));
    }
}

void BandMaker::emitBand(const TemplateItem &band, const QColor &background, BandImage &image) const
{
    PageItem fill;
    fill.kind = PageItem::Fill;
    fill.style = band.number;
    fill.color = background.isValid() ? background : band.color(QStringLiteral("backgroundColor"));
    const QString mode = QStringLiteral("backgroundMode");
    const bool isClear = band.has(mode) && band.text(mode) != QLatin1String("1") &&
                         band.text(mode) != QLatin1String("OpaqueMode");
    if (fill.color == QColor(Qt::white) || fill.color.alpha() == 0 ||
        (isClear && !background.isValid()))
        fill.color = QColor();
    fill.rect = QRectF(0, 0, band.geometry.width(), image.height);
    if (fill.color.isValid() || hasFrame(band))
        image.items.append(fill);
}

void BandMaker::emitBox(const ItemBox &box, const QPointF &origin, BandImage &image) const
{
    if (!box.isVisible)
        return;
    const bool isBare = box.page.kind == PageItem::Fill && !hasFrame(*box.item);
    if (!isBare) {
        PageItem item = box.page;
        item.rect = box.rect.translated(origin);
        image.items.append(item);
    }
    for (const ItemBox &child : box.children)
        emitBox(child, origin + box.rect.topLeft(), image);
}

} // namespace LimeReport
