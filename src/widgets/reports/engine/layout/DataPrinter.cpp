#include "widgets/reports/engine/layout/DataPrinter.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"

namespace LimeReport {

namespace {

constexpr int MostColumns = 50;

double heightOf(const Bands &bands)
{
    double height = 0;
    for (const TemplateItem *band : bands)
        height += band->geometry.height();
    return height;
}

} // namespace

DataPrinter::DataPrinter(LayoutContext &context, BandPrinter &printer, const DataBands &data,
                         const QString &outerGroup)
    : m_context(context),
      m_printer(printer),
      m_data(data),
      m_band(*data.band),
      m_isDetail(plainClass(*data.band) == QLatin1String("SubDetail")),
      m_outerGroup(outerGroup)
{
}

QString DataPrinter::sourceName() const
{
    return m_band.text(QStringLiteral("datasource"));
}

void DataPrinter::print()
{
    const QString source = sourceName();
    if (!source.isEmpty() && !m_context.scope.hasSource(source)) {
        m_context.scope.errors().add(
            QStringLiteral("полоса «%1»: нет источника данных «%2»").arg(m_band.name, source));
        m_printer.placeholder(
            m_band,
            QStringLiteral("Не показано: %1 (нет источника данных «%2»)").arg(m_band.name, source));
        return;
    }
    // Without a source the band is printed once.
    const int count = source.isEmpty() ? 1 : m_context.scope.rowCount(source);
    if (m_isDetail)
        m_context.book.beginGroup(m_band.name, m_context.scope);
    printEnds(m_data.headers, count > 0, true);
    const bool isDownFirst =
        m_band.integer(QStringLiteral("columnsFillDirection")) == 1 ||
        m_band.text(QStringLiteral("columnsFillDirection")) == QLatin1String("Vertical");
    m_printer.beginColumns(
        qBound(1, m_band.integer(QStringLiteral("columnsCount"), 1), MostColumns), isDownFirst);
    printRows(count);
    m_printer.endColumns();
    for (const TemplateItem *header : m_data.headers)
        m_printer.forget(header);
    printEnds(m_data.footers, count > 0, false);
    if (m_isDetail)
        m_context.book.endGroup(m_band.name);
}

void DataPrinter::printEnds(const Bands &bands, bool hasRows, bool isHeader)
{
    for (const TemplateItem *band : bands) {
        if (!hasRows && !band->flag(QStringLiteral("printIfEmpty")))
            continue;
        BandPrinter::Request request;
        request.band = band;
        request.place = place(*band, m_isDetail ? m_band.name : QString());
        request.isReprinted = isHeader && band->flag(QStringLiteral("reprintOnEachPage"));
        if (isHeader && hasRows)
            request.keepBelow = headHeight(0);
        m_printer.print(request);
    }
}

// Of what has to stand below a header for it not to be alone on a sheet.
double DataPrinter::headHeight(std::size_t group) const
{
    double height = m_band.geometry.height();
    for (std::size_t index = group; index < m_data.groups.size(); ++index)
        height += m_data.groups[index].header->geometry.height();
    return height;
}

void DataPrinter::setRow(int row)
{
    if (!sourceName().isEmpty())
        m_context.scope.setRow(sourceName(), row);
}

void DataPrinter::printRows(int count)
{
    for (int row = 0; row < count && !m_context.isStopped(); ++row) {
        setRow(row);
        m_context.scope.setLine(m_band.name, row + 1);
        const int changed = row == 0 ? 0 : changedGroup();
        const int groups = int(m_data.groups.size());
        if (row > 0 && changed < groups) {
            // Footers tell of the rows above them.
            setRow(row - 1);
            closeGroups(changed);
            setRow(row);
        }
        openGroups(changed, row);
        printRow(row, count);
        printDetails();
    }
    if (count > 0)
        closeGroups(0);
}

void DataPrinter::printRow(int row, int count)
{
    if (row > 0 && m_band.flag(QStringLiteral("startNewPage")))
        m_printer.newSheet();
    m_context.book.takeRow(m_band.name, m_context.expander, m_context.scope);
    BandPrinter::Request request;
    request.band = &m_band;
    request.place = place(m_band, innermostGroup());
    request.isRow = true;
    if (row % 2 == 1)
        request.background = m_band.color(QStringLiteral("alternateBackgroundColor"));
    if (row == count - 1 && m_band.flag(QStringLiteral("keepFooterTogether"))) {
        request.keepBelow = heightOf(m_data.footers);
        for (const GroupBands &group : m_data.groups)
            request.keepBelow += heightOf(group.footers);
    }
    m_printer.print(request);
}

void DataPrinter::printDetails()
{
    for (const DataBands &detail : m_data.details) {
        if (!m_context.isStopped())
            DataPrinter(m_context, m_printer, detail, detail.band->name).print();
    }
}

QVariant DataPrinter::key(const TemplateItem &header)
{
    const QString condition = header.text(QStringLiteral("condition"));
    const QString field = header.text(QStringLiteral("groupFieldName"));
    ContentPlace at = place(header, QString());
    at.item = QStringLiteral("condition");
    m_context.scope.setPlace(at);
    if (field.isEmpty())
        return m_context.expander.value(condition, m_context.scope);
    const int dot = field.indexOf(QLatin1Char('.'));
    const QString source = dot < 0 ? sourceName() : field.left(dot);
    const QString column = field.mid(dot + 1);
    if (!m_context.scope.hasColumn(source, column))
        m_context.scope.errors().add(
            QStringLiteral("полоса «%1»: нет столбца %2.%3").arg(header.name, source, column));
    return m_context.scope.field(source, column);
}

// The outermost group whose key is another than in the row before; keys are taken over.
int DataPrinter::changedGroup()
{
    const int groups = int(m_data.groups.size());
    int changed = groups;
    for (int index = 0; index < groups; ++index) {
        const QVariant now = key(*m_data.groups[std::size_t(index)].header);
        QVariant &before = m_keys[std::size_t(index)];
        if (now != before && changed == groups)
            changed = index;
        before = now;
    }
    return changed;
}

void DataPrinter::openGroups(int from, int row)
{
    if (row == 0) {
        m_keys.clear();
        for (const GroupBands &group : m_data.groups)
            m_keys.push_back(key(*group.header));
    }
    for (std::size_t index = std::size_t(from); index < m_data.groups.size(); ++index) {
        const TemplateItem *header = m_data.groups[index].header;
        if (row > 0 && !m_printer.isHolding() && header->flag(QStringLiteral("startNewPage")))
            m_printer.newSheet();
        if (!m_printer.isHolding() && header->flag(QStringLiteral("keepGroupTogether"))) {
            m_printer.hold();
            m_holdingGroup = int(index);
        }
        m_context.book.beginGroup(header->name, m_context.scope);
        BandPrinter::Request request;
        request.band = header;
        request.place = place(*header, header->name);
        request.isReprinted = header->flag(QStringLiteral("reprintOnEachPage"));
        request.keepBelow = headHeight(index + 1);
        m_printer.print(request);
    }
}

void DataPrinter::closeGroups(int from)
{
    for (int index = int(m_data.groups.size()) - 1; index >= from; --index) {
        const GroupBands &group = m_data.groups[std::size_t(index)];
        for (const TemplateItem *footer : group.footers) {
            BandPrinter::Request request;
            request.band = footer;
            request.place = place(*footer, group.header->name);
            m_printer.print(request);
        }
        if (m_holdingGroup == index) {
            m_printer.release();
            m_holdingGroup = -1;
        }
        m_printer.forget(group.header);
        m_context.book.endGroup(group.header->name);
    }
}

ContentPlace DataPrinter::place(const TemplateItem &band, const QString &group) const
{
    ContentPlace made;
    made.band = band.name;
    made.range = group.isEmpty() ? ContentPlace::Range::Report : ContentPlace::Range::Group;
    made.group = group;
    made.isAhead = plainClass(band).endsWith(QLatin1String("Header"));
    return made;
}

QString DataPrinter::innermostGroup() const
{
    return m_data.groups.empty() ? m_outerGroup : m_data.groups.back().header->name;
}

} // namespace LimeReport
