#include "nodes/reports/ReportSignalInfo.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/reports/data/FactColumns.h"
#include "nodes/reports/data/SignalInquiry.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>

namespace Nodes {

namespace {

class SignalQuestion : public ReportQuestion
{
public:
    SignalQuestion(const ReportSignalInfo &signal, const ReportOrder &order)
        : m_signal(SignalInquiry::Of(signal, order)), m_order(order), m_step(signal.GetStep())
    {
    }

    ReportTablePtr Answer(const std::atomic<bool> &isCancelled) override
    {
        auto table = std::make_shared<ReportTable>();
        if (m_step == StepSamples) {
            m_signal.ReadSamples({m_order.span.begin, std::min(m_order.span.end, m_order.now)},
                                 *table, isCancelled);
            return table;
        }
        const std::vector<ReportSpan> rows = RowsUntilNow(m_order, m_step, *table);
        std::vector<SignalFacts> facts;
        table->Note(m_signal.ReadFacts(rows, m_order.now, facts, isCancelled));
        FactColumns::AddRows(*table, rows, m_step, m_order.shifts);
        FactColumns::AddValue(*table, "value", m_signal, facts);
        FactColumns::AddMark(*table, "mark", facts);
        FactColumns::AddAll(*table, m_signal.decimals, facts);
        return table;
    }

private:
    const SignalInquiry m_signal;
    const ReportOrder m_order;
    const enReportStep m_step;
};

} // namespace

void ReportSignalInfo::DescribeSteps(KindBuilder &builder, bool hasSamples)
{
    if (hasSamples)
        builder.Choice(StepSamples, "samples", "Каждое значение");
    builder.Choice(StepHour, "hour", "Час")
        .Choice(StepDay, "day", "Сутки")
        .Choice(StepShift, "shift", "Смена")
        .Choice(StepWhole, "whole", "Весь период");
}

KindInfo ReportSignalInfo::Kind()
{
    KindBuilder builder =
        KindBuilder::For<ReportSignalInfo>("reportSignal", "Report signal", "Сигнал отчёта");
    builder.Property<&ReportSignalInfo::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&ReportSignalInfo::m_aggregate>(Prop::Aggregate, "Value", "Значение")
        .Choice(AggregateMean, "mean", "Среднее")
        .Choice(AggregateMinimum, "minimum", "Минимум")
        .Choice(AggregateMaximum, "maximum", "Максимум")
        .Choice(AggregateIntegral, "integral", "Интеграл по часам")
        .Choice(AggregateHours, "hours", "Наработка, ч")
        .Choice(AggregateStarts, "starts", "Пуски")
        .Choice(AggregateFirst, "first", "На начало")
        .Choice(AggregateLast, "last", "На конец")
        .Choice(AggregateChange, "change", "Прирост")
        .Property<&ReportSignalInfo::m_step>(Prop::Step, "Rows", "Строки");
    DescribeSteps(builder, true);
    return builder
        .Property<&ReportSignalInfo::m_threshold>(Prop::Threshold, "Running above",
                                                  "В работе, если больше")
        .Property<&ReportSignalInfo::m_decimals>(Prop::Decimals, "Decimals", "Знаков после запятой")
        .Range(-1, 9);
}

BasicSignal *ReportSignalInfo::GetSignal() const
{
    return dynamic_cast<BasicSignal *>(m_signal.GetNode());
}

std::string ReportSignalInfo::GetUnit() const
{
    static const std::string perHour = "/ч";
    const BasicSignal *signal = GetSignal();
    const std::string unit = signal ? signal->GetUnit() : std::string();
    switch (m_aggregate) {
    case AggregateHours:
        return "ч";
    case AggregateStarts:
        return {};
    case AggregateIntegral: {
        if (unit.empty())
            return {};
        const std::size_t place = unit.rfind(perHour);
        const bool isRate = place != std::string::npos && place + perHour.size() == unit.size();
        return isRate ? unit.substr(0, place) : unit + "·ч";
    }
    default:
        return unit;
    }
}

std::unique_ptr<ReportQuestion> ReportSignalInfo::Ask(const ReportOrder &order) const
{
    return std::make_unique<SignalQuestion>(*this, order);
}

} // namespace Nodes
