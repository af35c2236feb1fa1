#include "nodes/reports/reportSummary.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/data/FactColumns.h"
#include "nodes/reports/data/SignalInquiry.h"

#include <utility>

namespace Nodes {

namespace {

class SummaryQuestion : public ReportQuestion
{
public:
    SummaryQuestion(const std::vector<const ReportSignalInfo *> &infos, const ReportOrder &order,
                    int rows)
        : m_order(order), m_rows(rows)
    {
        for (const ReportSignalInfo *info : infos)
            m_signals.push_back(SignalInquiry::Of(*info, order));
    }

    ReportTablePtr Answer(const std::atomic<bool> &isCancelled) override
    {
        auto table = std::make_shared<ReportTable>();
        if (m_rows == reportSummary::RowsOfSignals)
            fillBySignals(*table, isCancelled);
        else
            fillByTime(*table, isCancelled);
        return table;
    }

private:
    void fillByTime(ReportTable &table, const std::atomic<bool> &isCancelled) const
    {
        const auto step = enReportStep(m_rows);
        const std::vector<ReportSpan> rows = RowsUntilNow(m_order, step, table);
        FactColumns::AddRows(table, rows, step, m_order.shifts);
        for (const SignalInquiry &signal : m_signals) {
            std::vector<SignalFacts> facts;
            table.Note(signal.ReadFacts(rows, m_order.now, facts, isCancelled));
            FactColumns::AddValue(table, signal.name, signal, facts);
            FactColumns::AddMark(table, signal.name + "_mark", facts);
        }
    }

    void fillBySignals(ReportTable &table, const std::atomic<bool> &isCancelled) const
    {
        const std::vector<ReportSpan> rows = RowsUntilNow(m_order, StepWhole, table);
        std::vector<SignalFacts> all;
        for (const SignalInquiry &signal : m_signals) {
            std::vector<SignalFacts> facts;
            table.Note(signal.ReadFacts(rows, m_order.now, facts, isCancelled));
            all.push_back(facts.empty() ? SignalFacts() : facts.front());
        }
        table.rows = m_signals.size();
        addTexts(table, "name", &SignalInquiry::name);
        addTexts(table, "text", &SignalInquiry::text);
        addTexts(table, "unit", &SignalInquiry::unit);
        ReportColumn &values = table.AddNumbers("value");
        for (std::size_t i = 0; i < all.size(); ++i)
            values.numbers.push_back(all[i].Get(enReportAggregate(m_signals[i].aggregate)));
        ReportColumn &decimals = table.AddNumbers("decimals", 0);
        for (const SignalInquiry &signal : m_signals)
            decimals.numbers.push_back(signal.decimals);
        FactColumns::AddMark(table, "mark", all);
        FactColumns::AddAll(table, -1, all);
    }

    void addTexts(ReportTable &table, const char *name, std::string SignalInquiry::*text) const
    {
        ReportColumn &column = table.AddTexts(name);
        for (const SignalInquiry &signal : m_signals)
            column.texts.push_back(signal.*text);
    }

    const ReportOrder m_order;
    const int m_rows;
    std::vector<SignalInquiry> m_signals;
};

} // namespace

KindInfo reportSummary::Kind()
{
    KindBuilder builder =
        KindBuilder::For<reportSummary>("reportSummary", "Report summary", "Сводка отчёта");
    builder.Property<&reportSummary::m_rows>(Prop::Rows, "Rows", "Строки");
    ReportSignalInfo::DescribeSteps(builder, false);
    return builder.Choice(RowsOfSignals, "signals", "Сигнал")
        .Children({NodeType(ReportSignalInfo::Code)});
}

std::vector<const ReportSignalInfo *> reportSummary::GetSignals() const
{
    std::vector<const ReportSignalInfo *> infos;
    for (const auto &child : Children()) {
        if (const auto *info = dynamic_cast<const ReportSignalInfo *>(child.get()))
            infos.push_back(info);
    }
    return infos;
}

std::unique_ptr<ReportQuestion> reportSummary::Ask(const ReportOrder &order) const
{
    return std::make_unique<SummaryQuestion>(GetSignals(), order, m_rows);
}

void reportSummary::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (GetSignals().empty())
        results.Add(GetNodeLink(), Result(this, Result::NotFound),
                    GetPath() + ": в сводке отчёта нет ни одного сигнала.");
}

} // namespace Nodes
