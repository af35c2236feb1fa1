#include "widgets/eventlist/export/EventCsvFile.h"

#include "widgets/dialogs/SaveFileQuestion.h"
#include "widgets/eventlist/export/EventCsvRows.h"

#include "nodes/journal/JournalReader.h"

namespace Widgets {

EventCsvFile::EventCsvFile(std::unique_ptr<Nodes::JournalReader> journal)
    : m_journal(std::move(journal))
{
}

EventCsvFile::~EventCsvFile() = default;

QString EventCsvFile::error() const
{
    return SaveFileQuestion::failure(m_file->fileName(), m_file->errorString());
}

void EventCsvFile::open(const QString &name)
{
    m_file = std::make_unique<QSaveFile>(name);
    const bool isOpen = m_file->open(QIODevice::WriteOnly);
    emit written(isOpen && m_file->write(EventCsvRows::header()) >= 0 ? QString() : error());
}

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

void EventCsvFile::write(std::vector<Nodes::BasicEvent> events, const std::vector<std::size_t> &cut)
{
    for (const std::size_t number : cut) {
        if (!complete(events[number]))
            return emit written(QStringLiteral("Журнал не прочитан: длинный текст события %1 есть "
                                               "только в начале. Повторите сохранение.")
                                    .arg(events[number].id));
    }
    const QByteArray text = EventCsvRows::rows(events);
    const bool isWritten = m_file->write(text) == text.size() && m_file->flush();
    emit written(isWritten ? QString() : error());
}

void EventCsvFile::close(bool isKept)
{
    QString failure;
    if (m_file && isKept && !m_file->commit())
        failure = error();
    else if (m_file && !isKept)
        m_file->cancelWriting();
    m_file.reset();
    emit closed(failure);
}

} // namespace Widgets
