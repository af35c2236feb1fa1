#include "widgets/reports/engine/layout/ReportLayout.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/layout/DataPrinter.h"

#include <QMutexLocker>

namespace LimeReport {

namespace {

void addContents(const TemplateItem &item, AggregateBook &book)
{
    for (const char *key : {"content", "condition"}) {
        const QString content = item.text(QLatin1String(key));
        if (!content.isEmpty())
            book.addContent(content, item.flag(QStringLiteral("allowHTML")));
    }
    for (const TemplateItem &child : item.children)
        addContents(child, book);
}

void printAll(const Bands &bands, BandPrinter &printer)
{
    for (const TemplateItem *band : bands) {
        BandPrinter::Request request;
        request.band = band;
        request.place.band = band->name;
        request.place.isAhead = plainClass(*band) == QLatin1String("ReportHeader");
        printer.print(request);
    }
}

void printPage(LayoutContext &context, LateTexts &late, int index, QStringList &problems)
{
    const TemplatePage &page = context.report.pages[std::size_t(index)];
    const BandTree tree = BandTree::of(page, problems);
    BandPrinter printer(context, late, page, index, tree);
    printer.newSheet();
    printAll(tree.reportHeaders, printer);
    for (const DataBands &data : tree.data) {
        if (!context.isStopped())
            DataPrinter(context, printer, data).print();
    }
    printAll(tree.reportFooters, printer);
    for (const TemplateItem *band : tree.tearOffs) {
        BandPrinter::Request request;
        request.band = band;
        request.place.band = band->name;
        printer.printTearOff(request);
    }
    if (!context.isCancelled)
        printer.closeSheet();
}

} // namespace

ReportLayout::ReportLayout(ReportTemplatePtr report, DataSet data)
    : m_report(std::move(report)), m_data(std::move(data))
{
}

bool ReportLayout::run(PageStore &pages)
{
    AggregateBook book;
    for (const TemplatePage &page : m_report->pages)
        addContents(page.item, book);
    ContentExpander expander(&book);
    {
        QMutexLocker lock(&m_mutex);
        m_expander = &expander;
    }
    layOut(pages, expander, book);
    QMutexLocker lock(&m_mutex);
    m_expander = nullptr;
    return !m_isCancelled && m_failure.isEmpty();
}

void ReportLayout::layOut(PageStore &pages, ContentExpander &expander, AggregateBook &book)
{
    ReportScope scope(m_data);
    scope.setFilesDirectory(m_report->directory);
    LateTexts late(pages);
    const QString script = m_report->scriptContext.value(QStringLiteral("initScript")).toString();
    const QString scriptError =
        script.trimmed().isEmpty() ? QString() : expander.runInitScript(script, scope);
    if (!scriptError.isEmpty())
        scope.errors().add(QStringLiteral("начальный сценарий шаблона: ") + scriptError);
    LayoutContext context{*m_report, scope,         expander, book,
                          pages,     m_isCancelled, m_onPage, QString()};
    QStringList problems;
    for (int index = 0; index < int(m_report->pages.size()) && !context.isStopped(); ++index)
        printPage(context, late, index, problems);
    if (!m_isCancelled) {
        book.finish();
        scope.setPageCount(pages.count());
        late.fill(scope, expander);
    }
    m_failure = context.failure;
    m_problems = problems + scope.errors().texts();
}

void ReportLayout::cancel()
{
    m_isCancelled = true;
    QMutexLocker lock(&m_mutex);
    if (m_expander)
        m_expander->cancel();
}

} // namespace LimeReport
