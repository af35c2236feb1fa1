#include "widgets/reports/engine/expressions/AggregateBook.h"

#include "widgets/reports/engine/expressions/AggregateSum.h"
#include "widgets/reports/engine/expressions/ContentParser.h"
#include "widgets/reports/engine/expressions/ExpressionValues.h"
#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/expressions/ScriptSource.h"

#include <QHash>

#include <vector>

namespace LimeReport {

struct AggregateBook::Part
{
    using Sums = std::vector<AggregateSum>; // one for each expression of the band

    struct Band
    {
        QStringList expressions;
        Sums report;
        QHash<int, Sums> pages;
        QHash<quint64, Sums> runs;
        std::vector<std::vector<AggregateSample>> taken; // rows that are not on a page yet
    };

    static void add(Sums &sums, const std::vector<AggregateSample> &row)
    {
        sums.resize(row.size());
        for (std::size_t i = 0; i < row.size(); ++i)
            sums[i].add(row[i]);
    }

    QHash<QString, Band> bands;
    QHash<QString, quint64> openRuns; // by group
    quint64 lastRun = 0;
    int page = 1;
    bool isFinished = false;
};

AggregateBook::AggregateBook() : m_part(std::make_unique<Part>()) {}

AggregateBook::~AggregateBook() = default;

void AggregateBook::addContent(const QString &content, bool isHtml)
{
    for (const ContentPiece &piece : ContentParser::parse(content, isHtml).pieces) {
        if (piece.kind != ContentPiece::Kind::Script)
            continue;
        for (const ScriptInput &input : ScriptSource::read(piece.body).inputs) {
            if (input.kind != ScriptInput::Kind::Aggregate)
                continue;
            QStringList &expressions = m_part->bands[input.aggregate.band].expressions;
            if (!expressions.contains(input.aggregate.expression))
                expressions.append(input.aggregate.expression);
        }
    }
}

bool AggregateBook::isEmpty() const
{
    return m_part->bands.isEmpty();
}

void AggregateBook::takeRow(const QString &band, ExpressionValues &values, ReportScope &scope)
{
    const auto found = m_part->bands.find(band);
    if (found == m_part->bands.end())
        return;
    std::vector<AggregateSample> row;
    for (const QString &expression : qAsConst(found->expressions)) {
        if (expression.isEmpty()) {
            row.push_back(AggregateSample::of(1, Nodes::Quality::Good));
            continue;
        }
        Nodes::Quality quality = Nodes::Quality::Good;
        const QVariant value = values.value(expression, scope, &quality);
        row.push_back(AggregateSample::of(value, quality));
    }
    Part::add(found->report, row);
    for (const quint64 run : qAsConst(m_part->openRuns))
        Part::add(found->runs[run], row);
    found->taken.push_back(std::move(row));
}

void AggregateBook::placeRow(const QString &band)
{
    const auto found = m_part->bands.find(band);
    if (found == m_part->bands.end() || found->taken.empty())
        return;
    Part::add(found->pages[m_part->page], found->taken.front());
    found->taken.erase(found->taken.begin());
}

void AggregateBook::beginPage(int page)
{
    m_part->page = page;
}

void AggregateBook::beginGroup(const QString &group, ReportScope &scope)
{
    m_part->openRuns.insert(group, ++m_part->lastRun);
    scope.setRun(group, m_part->lastRun);
}

void AggregateBook::endGroup(const QString &group)
{
    m_part->openRuns.remove(group);
}

void AggregateBook::finish()
{
    m_part->isFinished = true;
}

bool AggregateBook::isFinished() const
{
    return m_part->isFinished;
}

AggregateValue AggregateBook::value(const AggregateRequest &request, const ReportScope &scope) const
{
    const auto band = m_part->bands.constFind(request.band);
    const int index =
        band == m_part->bands.constEnd() ? -1 : band->expressions.indexOf(request.expression);
    if (index < 0) {
        AggregateValue refused;
        refused.error = QStringLiteral("итог полосы «%1» здесь спросить нельзя").arg(request.band);
        return refused;
    }
    const ContentPlace &place = scope.place();
    const auto told = [&request, index](const Part::Sums &sums) {
        return (index < int(sums.size()) ? sums[std::size_t(index)] : AggregateSum())
            .value(request.function);
    };
    switch (place.range) {
    case ContentPlace::Range::Page:
        return told(band->pages.value(scope.page()));
    case ContentPlace::Range::Group:
        return told(band->runs.value(scope.run(place.group)));
    case ContentPlace::Range::Report:
        break;
    }
    return told(band->report);
}

} // namespace LimeReport
