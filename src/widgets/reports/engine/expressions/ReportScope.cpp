#include "widgets/reports/engine/expressions/ReportScope.h"

#include "widgets/reports/engine/data/DetailIndex.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"

namespace LimeReport {

ReportScope::ReportScope(DataSet data, const QDateTime &now)
    : m_data(std::move(data)), m_now(now), m_errors(std::make_unique<ReportErrors>())
{
}

ReportScope::~ReportScope() = default;

const DetailIndex *ReportScope::detail(const QString &source) const
{
    const auto made = m_details.find(source);
    if (made != m_details.end())
        return made->second.get();
    std::unique_ptr<DetailIndex> index;
    for (const DetailLink &link : m_data.links) {
        if (link.name != source)
            continue;
        const DataSource *master = this->source(link.master); // may be a linked one itself
        index = std::make_unique<DetailIndex>(link, master ? *master : DataSource(),
                                              m_data.sources.value(link.detail));
        for (const QString &error : index->errors())
            m_errors->add(error);
    }
    return m_details.emplace(source, std::move(index)).first->second.get();
}

const DataSource *ReportScope::source(const QString &source) const
{
    const DetailIndex *index = detail(source);
    const auto found = m_data.sources.constFind(index ? index->link().detail : source);
    return found == m_data.sources.constEnd() ? nullptr : &found.value();
}

bool ReportScope::hasSource(const QString &source) const
{
    return this->source(source) != nullptr;
}

int ReportScope::rowCount(const QString &source) const
{
    if (const DetailIndex *index = detail(source))
        return index->rowsOf(shownRow(index->link().master)).size();
    const DataSource *rows = this->source(source);
    return rows ? rows->rowCount() : 0;
}

int ReportScope::sourceRow(const QString &source, int row) const
{
    const DetailIndex *index = detail(source);
    return index ? index->rowsOf(shownRow(index->link().master)).value(row, -1) : row;
}

void ReportScope::setRow(const QString &source, int row)
{
    m_position.rows.insert(source, row);
    for (const DetailLink &link : m_data.links)
        if (link.master == source && link.name != source)
            setRow(link.name, -1);
}

int ReportScope::row(const QString &source) const
{
    return m_position.rows.value(source, -1);
}

int ReportScope::shownRow(const QString &source) const
{
    return sourceRow(source, std::max(row(source), 0));
}

QVariant ReportScope::field(const QString &source, const QString &column) const
{
    const DataSource *rows = this->source(source);
    return rows ? rows->value(shownRow(source), column) : QVariant();
}

Nodes::Quality ReportScope::quality(const QString &source, const QString &column) const
{
    const DataSource *rows = this->source(source);
    return rows ? rows->quality(shownRow(source), rows->column(column)) : Nodes::Quality::Bad;
}

bool ReportScope::hasColumn(const QString &source, const QString &column) const
{
    const DataSource *rows = this->source(source);
    return rows && rows->column(column) >= 0;
}

bool ReportScope::hasVariable(const QString &name) const
{
    return m_data.variables.contains(name);
}

QVariant ReportScope::variable(const QString &name) const
{
    return m_data.variables.value(name);
}

void ReportScope::setVariable(const QString &name, const QVariant &value)
{
    m_data.variables.insert(name, value);
}

void ReportScope::addError(const QString &text)
{
    const ContentPlace &at = m_position.place;
    m_errors->add(QStringLiteral("полоса «%1», элемент «%2»: %3").arg(at.band, at.item, text));
}

void ReportScope::keepAggregate(const QString &key, const AggregateValue &value)
{
    m_position.aggregates.insert(key, value);
}

void ReportScope::forgetAggregates()
{
    if (!m_position.aggregates.isEmpty())
        m_position.aggregates.clear();
}

} // namespace LimeReport
