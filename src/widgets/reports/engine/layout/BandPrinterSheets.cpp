#include "widgets/reports/engine/layout/BandPrinter.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"

#include <algorithm>

namespace LimeReport {

namespace {

constexpr int MostPages = 20000;
// Less than this between header and footer prints nothing sensible, 0.1 mm.
constexpr double LeastRoom = 100;

bool grows(const TemplateItem &item)
{
    return item.flag(QStringLiteral("autoHeight")) ||
           std::any_of(item.children.begin(), item.children.end(), grows);
}

ContentPlace pagePlace(const TemplateItem &band)
{
    ContentPlace place;
    place.band = band.name;
    place.isAhead = plainClass(band) != QLatin1String("PageFooter");
    place.range = ContentPlace::Range::Page;
    return place;
}

} // namespace

void BandPrinter::newSheet()
{
    if (m_context.isStopped())
        return;
    const ReportScope::Position now = m_context.scope.position();
    if (m_flow.isOpen())
        closeSheet();
    if (m_context.isStopped())
        return;
    const int page = m_context.pages.count() + 1;
    if (page > MostPages) {
        m_context.failure = QStringLiteral("в нём больше %1 листов.").arg(MostPages);
        return;
    }
    ++m_sheets;
    m_context.scope.setPage(page);
    m_context.book.beginPage(page);
    m_flow.open(footerHeight());
    printLoose();
    printFixed(m_tree.pageHeaders, "printOnFirstPage");
    reprint();
    m_flow.markFresh();
    if (m_flow.room() < LeastRoom)
        m_context.failure =
            QStringLiteral("на листе %1 колонтитулы не оставляют места остальному.").arg(page);
    m_context.scope.setPosition(now);
    m_context.scope.setPage(page);
}

void BandPrinter::closeSheet()
{
    if (!m_flow.isOpen())
        return;
    m_flow.advanceTo(m_flow.bottom());
    printFixed(m_tree.pageFooters, "printOnFirstPage");
    const QString error = m_context.pages.append(m_flow.take());
    if (!error.isEmpty())
        m_context.failure = error;
    else if (m_context.onPage)
        m_context.onPage(m_context.pages.count());
}

double BandPrinter::footerHeight()
{
    double height = 0;
    for (const TemplateItem *band : m_tree.pageFooters)
        height +=
            grows(*band) ? m_maker.make(*band, pagePlace(*band)).height : band->geometry.height();
    return height;
}

void BandPrinter::printFixed(const Bands &bands, const char *suppressed)
{
    for (const TemplateItem *band : bands) {
        if (m_sheets == 1 && !band->flag(QLatin1String(suppressed), true))
            continue;
        const BandImage image = m_maker.make(*band, pagePlace(*band));
        if (!image.isEmpty || band->flag(QStringLiteral("printIfEmpty")))
            m_flow.put(image);
    }
}

void BandPrinter::reprint()
{
    const int page = m_context.scope.page();
    for (Reprint &one : m_reprints) {
        one.position.page = page;
        m_context.scope.setPosition(one.position);
        const Request &request = one.request;
        m_flow.put(m_maker.make(*request.band, request.place, request.background));
    }
}

void BandPrinter::printLoose()
{
    for (const TemplateItem *item : m_tree.loose)
        m_flow.putAt(m_maker.makeLoose(*item, pagePlace(*item)), QPointF());
}

} // namespace LimeReport
