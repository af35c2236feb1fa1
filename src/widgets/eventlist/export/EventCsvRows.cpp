#include "widgets/eventlist/export/EventCsvRows.h"

#include "widgets/charts/export/CsvRows.h"

#include "nodes/events/EventInfo.h"

#include <string>

namespace Widgets {

namespace {

QByteArray quoted(const std::string &text)
{
    QByteArray field = QByteArray::fromStdString(text);
    field.replace('"', "\"\"");
    field.replace('\0', ' ');
    return '"' + field + '"';
}

} // namespace

QByteArray EventCsvRows::header()
{
    return QByteArrayLiteral("\xEF\xBB\xBF") +
           QStringLiteral(
               "Время;Уровень;Тип;Группа;Источник;Текст;Было;Стало;Пользователь;Запись\r\n")
               .toUtf8();
}

QByteArray EventCsvRows::rows(const std::vector<Nodes::BasicEvent> &events)
{
    QByteArray rows;
    for (const Nodes::BasicEvent &event : events) {
        const Nodes::EventInfo info(event);
        rows += CsvRows::time(event.time);
        for (const std::string &field :
             {info.GetEventLevel(), info.GetEventType(), info.GetGroupString(), event.source,
              event.text, event.oldValue, event.newValue, event.user}) {
            rows += ';';
            rows += quoted(field);
        }
        rows += ';' + QByteArray::number(qulonglong(event.id)) + "\r\n";
    }
    return rows;
}

} // namespace Widgets
