#include "widgets/eventlist/export/EventCsvFile.h"

#include "widgets/eventlist/export/EventCsvRows.h"

#include "nodes/journal/JournalReader.h"

namespace Widgets {

EventCsvFile::EventCsvFile(std::unique_ptr<Nodes::JournalReader> journal)
    : CsvFile(EventCsvRows::header()), m_journal(std::move(journal))
{
}

EventCsvFile::~EventCsvFile() = default;

bool EventCsvFile::complete(Nodes::BasicEvent &event)
{
    if (!m_journal || event.id == 0)
        return false;
    Nodes::JournalQuery query;
    query.begin = event.time;
    query.end = event.time + 1;
    query.after = Nodes::JournalKey{event.time, event.id - 1};
    query.limit = 1;
    std::vector<Nodes::BasicEvent> found;
    if (!m_journal->Query(query, found) || found.empty() || found.front().id != event.id)
        return false;
    event = found.front();
    return true;
}

void EventCsvFile::writeEvents(std::vector<Nodes::BasicEvent> events,
                               const std::vector<std::size_t> &cut)
{
    for (const std::size_t number : cut) {
        if (!complete(events[number]))
            return emit written(QStringLiteral("Журнал не прочитан: длинный текст события %1 есть "
                                               "только в начале. Повторите сохранение.")
                                    .arg(events[number].id));
    }
    write(EventCsvRows::rows(events));
}

} // namespace Widgets
