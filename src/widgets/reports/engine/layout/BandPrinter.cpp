#include "widgets/reports/engine/layout/BandPrinter.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/layout/BandSplit.h"

#include <algorithm>

namespace LimeReport {

namespace {

// What heights may differ by without mattering, 0.1 mm.
constexpr double Slack = 0.5;

} // namespace

BandPrinter::BandPrinter(LayoutContext &context, LateTexts &late, const TemplatePage &page,
                         int index, const BandTree &tree)
    : m_context(context),
      m_maker(context.report, context.scope, context.expander, late),
      m_flow(page, index),
      m_tree(tree)
{
}

void BandPrinter::print(const Request &request)
{
    if (m_context.isStopped())
        return;
    if (!m_flow.isOpen())
        newSheet();
    Held held{request, m_maker.make(*request.band, request.place, request.background),
              m_context.scope.position(), m_context.scope.page()};
    if (isLeftOut(request, held.image)) {
        finishRow(held);
        return;
    }
    if (!m_isHolding) {
        commit(held);
        return;
    }
    m_heldHeight += held.image.height;
    m_held.push_back(std::move(held));
    if (m_heldHeight > m_flow.fullRoom())
        release();
}

bool BandPrinter::isLeftOut(const Request &request, const BandImage &image) const
{
    return image.isEmpty && !request.band->flag(QStringLiteral("printIfEmpty"));
}

void BandPrinter::finishRow(const Held &held)
{
    if (held.request.isRow)
        m_context.book.placeRow(held.request.band->name);
}

void BandPrinter::hold()
{
    if (m_columns.count == 1)
        m_isHolding = true;
}

void BandPrinter::release()
{
    if (!m_isHolding)
        return;
    m_isHolding = false;
    const ReportScope::Position now = m_context.scope.position();
    std::vector<Held> waiting;
    waiting.swap(m_held);
    // What fits no sheet as a whole begins where it is.
    if (m_heldHeight > m_flow.room() + Slack && m_heldHeight <= m_flow.fullRoom() + Slack &&
        !m_flow.isFresh())
        newSheet();
    m_heldHeight = 0;
    for (Held &held : waiting) {
        if (!m_context.isStopped())
            commit(held);
    }
    const int page = m_context.scope.page();
    m_context.scope.setPosition(now);
    m_context.scope.setPage(page);
}

// A band that tells its page is filled in again when it has come to another one.
void BandPrinter::refresh(Held &held)
{
    const int page = m_context.scope.page();
    if (page == held.page || !m_maker.dependsOnPage(*held.request.band))
        return;
    const ReportScope::Position now = m_context.scope.position();
    held.position.page = page;
    m_context.scope.setPosition(held.position);
    held.image = m_maker.make(*held.request.band, held.request.place, held.request.background);
    held.page = page;
    m_context.scope.setPosition(now);
}

void BandPrinter::commit(Held &held)
{
    refresh(held);
    if (m_columns.count > 1 && held.request.isRow) {
        putInColumn(held);
    } else {
        const double needed = held.image.height + held.request.keepBelow;
        const bool isTooHigh = held.image.height > m_flow.room() + Slack;
        if (needed > m_flow.room() + Slack && !m_flow.isFresh() &&
            !(isTooHigh && isDivisible(held))) {
            newSheet();
            refresh(held);
        }
        putDivided(held);
    }
    finishRow(held);
    if (held.request.isReprinted)
        m_reprints.push_back({held.request, held.position});
}

bool BandPrinter::isDivisible(const Held &held) const
{
    return held.request.band->flag(QStringLiteral("splittable"));
}

void BandPrinter::putDivided(Held &held)
{
    const auto styles = [this](int number) -> const TextStyle & { return style(number); };
    while (held.image.height > m_flow.room() + Slack && !m_context.isStopped()) {
        const bool isFresh = m_flow.isFresh();
        auto parts = BandSplit::split(held.image, m_flow.room(), styles, isFresh);
        if (isFresh && !isDivisible(held))
            m_context.scope.errors().add(
                QStringLiteral("полоса «%1» выше листа и разделена").arg(held.request.band->name));
        if (!parts.first.items.isEmpty()) {
            m_flow.put(parts.first);
            held.image = std::move(parts.second);
        }
        newSheet();
    }
    if (!m_context.isStopped())
        m_flow.put(held.image);
}

void BandPrinter::beginColumns(int count, bool isDownFirst)
{
    m_columns = {std::max(1, count), isDownFirst, 0, m_flow.y(), m_flow.y(), m_flow.y()};
}

void BandPrinter::endColumns()
{
    if (m_columns.count > 1 && m_flow.isOpen())
        m_flow.advanceTo(std::max(m_flow.y(), m_columns.bottom));
    m_columns = Columns();
}

// Makes sure that the column under way has room for that height.
void BandPrinter::nextColumn(double height)
{
    Columns &columns = m_columns;
    const auto fits = [&] { return columns.y + height <= m_flow.bottom() + Slack; };
    if (columns.isDownFirst) {
        if (!fits() && columns.index + 1 < columns.count && columns.y > columns.top) {
            ++columns.index;
            columns.y = columns.top;
        }
    } else if (columns.index == columns.count) {
        columns.index = 0;
        columns.y = columns.bottom;
    }
    const bool isAtTop = columns.y <= columns.top && m_flow.isFresh() && columns.index == 0;
    if (fits() || isAtTop)
        return;
    m_flow.advanceTo(std::max(m_flow.y(), columns.bottom));
    newSheet();
    columns.index = 0;
    columns.top = columns.y = columns.bottom = m_flow.y();
}

void BandPrinter::putInColumn(Held &held)
{
    // Columns begin where the flow is: headers may have been printed since.
    if (m_flow.y() > m_columns.bottom) {
        m_columns.index = 0;
        m_columns.top = m_columns.y = m_columns.bottom = m_flow.y();
    }
    nextColumn(held.image.height);
    refresh(held);
    if (m_context.isStopped())
        return;
    const double height = std::min(held.image.height, m_flow.bottom() - m_columns.y);
    if (height < held.image.height - Slack)
        m_context.scope.errors().add(QStringLiteral("полоса «%1» выше листа: её столбец обрезан")
                                         .arg(held.request.band->name));
    const double x = m_flow.left() + m_columns.index * m_flow.width() / m_columns.count;
    m_flow.putAt(held.image, QPointF(x, m_columns.y));
    m_columns.bottom = std::max(m_columns.bottom, m_columns.y + height);
    if (m_columns.isDownFirst)
        m_columns.y += height;
    else
        ++m_columns.index;
}

void BandPrinter::forget(const TemplateItem *band)
{
    m_reprints.erase(
        std::remove_if(m_reprints.begin(), m_reprints.end(),
                       [band](const Reprint &one) { return one.request.band == band; }),
        m_reprints.end());
}

void BandPrinter::printTearOff(const Request &request)
{
    if (m_context.isStopped())
        return;
    Held held{request, m_maker.make(*request.band, request.place), m_context.scope.position(),
              m_context.scope.page()};
    if (isLeftOut(request, held.image))
        return;
    if (held.image.height > m_flow.room() + Slack && !m_flow.isFresh()) {
        newSheet();
        refresh(held);
    }
    m_flow.advanceTo(std::max(m_flow.y(), m_flow.bottom() - held.image.height));
    putDivided(held);
}

void BandPrinter::placeholder(const TemplateItem &band, const QString &told)
{
    if (m_context.isStopped())
        return;
    if (!m_flow.isOpen())
        newSheet();
    Held held;
    held.request.band = &band;
    held.image.band = &band;
    held.image.height = std::max(100.0, band.geometry.height());
    PageItem item;
    item.kind = PageItem::Placeholder;
    item.style = band.number;
    item.text = told;
    item.rect = QRectF(0, 0, m_flow.width(), held.image.height);
    held.image.items.append(item);
    held.page = m_context.scope.page();
    commit(held);
}

const TextStyle &BandPrinter::style(int number)
{
    if (m_items.empty()) {
        m_items.resize(std::size_t(m_context.report.itemCount));
        m_styles.resize(m_items.size());
        const std::function<void(const TemplateItem &)> collect = [&](const TemplateItem &item) {
            m_items[std::size_t(item.number)] = &item;
            std::for_each(item.children.begin(), item.children.end(), collect);
        };
        for (const TemplatePage &page : m_context.report.pages)
            collect(page.item);
    }
    auto &made = m_styles[std::size_t(number)];
    if (!made)
        made = std::make_unique<TextStyle>(*m_items[std::size_t(number)]);
    return *made;
}

} // namespace LimeReport
