#include "nodes/reports/reportEvents.h"

#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/reports/data/EventColumns.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::size_t pageSize = 2000;

class EventsQuestion : public ReportQuestion
{
public:
    EventsQuestion(std::unique_ptr<JournalReader> reader, JournalQuery query, int limit)
        : m_reader(std::move(reader)), m_query(std::move(query)), m_limit(std::size_t(limit))
    {
    }

    ReportTablePtr Answer(const std::atomic<bool> &isCancelled) override
    {
        auto table = std::make_shared<ReportTable>();
        EventColumns columns(*table);
        if (!m_reader) {
            table->Note(Result(Result::NotAvailable, "the journal is not open"));
            return table;
        }
        std::vector<BasicEvent> page;
        do {
            m_query.limit = std::min(pageSize, m_limit + 1 - table->rows);
            page.clear();
            table->Note(isCancelled ? Result(Result::Cancelled) : m_reader->Query(m_query, page));
            for (const BasicEvent &event : page) {
                if (table->rows == m_limit) {
                    table->Note(Result(Result::LimitExceeded, "more events than the report takes"));
                    return table;
                }
                columns.Add(event);
            }
            if (!page.empty())
                m_query.after = JournalKey::Of(page.back());
        } while (table->result && page.size() == m_query.limit);
        return table;
    }

private:
    const std::unique_ptr<JournalReader> m_reader;
    JournalQuery m_query;
    const std::size_t m_limit;
};

std::vector<int> typesOf(int events)
{
    if (events == reportEvents::EventsOfAlarms)
        return {TypeAlarmActive, TypeAlarmReturned, TypeAlarmState, TypeAcknowledgement};
    return {};
}

std::vector<int> levelsOf(int events)
{
    if (events == reportEvents::EventsOfUsers)
        return {LevelAcknowledge, LevelSecurity, LevelAction};
    return {};
}

} // namespace

KindInfo reportEvents::Kind()
{
    return KindBuilder::For<reportEvents>("reportEvents", "Report events", "События отчёта")
        .Property<&reportEvents::m_of>(Prop::Of, "Events", "События")
        .Choice(EventsOfAll, "all", "Все")
        .Choice(EventsOfAlarms, "alarms", "Тревоги")
        .Choice(EventsOfUsers, "users", "Действия людей")
        .Property<&reportEvents::m_maximumLevel>(Prop::MaximumLevel, "Levels up to", "Уровень до")
        .Range(LevelCritical, LevelDebug)
        .Property<&reportEvents::m_text>(Prop::Text, "Text contains", "Текст содержит")
        .Property<&reportEvents::m_sources>(Prop::Sources, "Of these sources", "Источники")
        .Hint("any")
        .Property<&reportEvents::m_limit>(Prop::Limit, "Rows at most", "Строк не более")
        .Range(1, int(ReportTable::MostRows))
        .Property<&reportEvents::m_order>(Prop::Order, "Order", "Порядок")
        .Choice(JournalQuery::OldestFirst, "oldestFirst", "Сначала старые")
        .Choice(JournalQuery::NewestFirst, "newestFirst", "Сначала новые");
}

std::unique_ptr<ReportQuestion> reportEvents::Ask(const ReportOrder &order) const
{
    JournalQuery query;
    query.begin = order.span.begin;
    query.end = order.span.end;
    query.maximumLevel = m_maximumLevel;
    query.levels = levelsOf(m_of);
    query.types = typesOf(m_of);
    query.text = m_text;
    query.order = JournalQuery::Order(m_order);
    const EventJournal *journal = order.core ? &order.core->GetJournal() : nullptr;
    if (!journal)
        return std::make_unique<EventsQuestion>(nullptr, std::move(query), m_limit);
    for (const NodeLink &source : m_sources)
        query.nodes.push_back(journal->SourceOf(source));
    return std::make_unique<EventsQuestion>(journal->OpenReader(), std::move(query), m_limit);
}

} // namespace Nodes
