#include "nodes/reports/reportAlarms.h"

#include "nodes/alarms/statistics/AlarmStatisticsReading.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/reports/data/AlarmColumns.h"
#include "nodes/reports/data/AlarmShifts.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Nodes {

namespace {

class AlarmsQuestion : public ReportQuestion
{
public:
    AlarmsQuestion(const ReportOrder &order, int content, int limit)
        : m_content(content), m_limit(std::size_t(limit))
    {
        m_reading.begin = order.span.begin;
        m_reading.end = std::min(order.span.end, order.now);
        if (content == reportAlarms::ContentShifts)
            m_reading.shifts = AlarmShiftsOf(order.shifts, m_reading.begin, m_reading.end);
        if (!order.core)
            return;
        m_journal = order.core->GetJournal().OpenReader();
        if (const systemAlarming *alarming = order.core->GetSystemAlarming())
            m_reading.Take(*alarming);
    }

    ReportTablePtr Answer(const std::atomic<bool> &isCancelled) override
    {
        auto table = std::make_shared<ReportTable>();
        AlarmFigures figures;
        if (!m_journal)
            table->Note(Result(Result::NotAvailable, "the journal is not open"));
        else if (m_reading.begin < m_reading.end)
            table->Note(m_reading.Read(*m_journal, isCancelled, figures));
        if (m_content == reportAlarms::ContentFrequent)
            AlarmColumns::AddFrequent(*table, figures, m_limit);
        else if (m_content == reportAlarms::ContentTimeline)
            AlarmColumns::AddTimeline(*table, figures);
        else if (m_content == reportAlarms::ContentAreas)
            AlarmColumns::AddAreas(*table, figures, m_limit);
        else if (m_content == reportAlarms::ContentShifts)
            AlarmColumns::AddShifts(*table, figures);
        else
            AlarmColumns::AddMeasures(*table, figures);
        return table;
    }

private:
    AlarmStatisticsReading m_reading;
    std::unique_ptr<JournalReader> m_journal;
    const int m_content;
    const std::size_t m_limit;
};

} // namespace

KindInfo reportAlarms::Kind()
{
    return KindBuilder::For<reportAlarms>("reportAlarms", "Report alarms", "Тревоги отчёта")
        .Property<&reportAlarms::m_content>(Prop::Content, "Content", "Содержание")
        .Choice(ContentMeasures, "measures", "Показатели")
        .Choice(ContentFrequent, "frequent", "Самые частые")
        .Choice(ContentTimeline, "timeline", "По 10 минут")
        .Choice(ContentAreas, "areas", "По участкам")
        .Choice(ContentShifts, "shifts", "По сменам")
        .Property<&reportAlarms::m_limit>(Prop::Limit, "Rows at most", "Строк не более")
        .Range(1, 1000);
}

std::unique_ptr<ReportQuestion> reportAlarms::Ask(const ReportOrder &order) const
{
    return std::make_unique<AlarmsQuestion>(order, m_content, m_limit);
}

} // namespace Nodes
