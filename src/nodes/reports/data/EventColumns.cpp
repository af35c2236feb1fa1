#include "nodes/reports/data/EventColumns.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/reports/data/ReportTable.h"
#include "nodes/reports/time/LocalCalendar.h"

namespace Nodes {

namespace {

enum Column {
    Time,
    Date,
    ClockTime,
    Level,
    LevelText,
    Type,
    Source,
    Text,
    User,
    Old,
    New,
    Priority
};

const char *levelText(EventLevel level)
{
    switch (level) {
    case LevelCritical:
        return "Авария";
    case LevelAlarm:
        return "Тревога";
    case LevelWarning:
        return "Предупреждение";
    case LevelAcknowledge:
        return "Квитирование";
    case LevelInformation:
        return "Сообщение";
    case LevelSecurity:
        return "Безопасность";
    case LevelAction:
        return "Действие";
    case LevelDebug:
        break;
    }
    return "Отладка";
}

} // namespace

EventColumns::EventColumns(ReportTable &table) : m_table(table)
{
    table.AddTexts("time");
    table.AddTexts("date");
    table.AddTexts("clock");
    table.AddNumbers("level", 0);
    table.AddTexts("levelText");
    table.AddNumbers("type", 0);
    for (const char *name : {"source", "text", "user", "old", "new"})
        table.AddTexts(name);
    table.AddNumbers("priority", 0);
}

void EventColumns::Add(const BasicEvent &event)
{
    std::vector<ReportColumn> &columns = m_table.columns;
    columns[Time].texts.push_back(ReportTimeText(event.time));
    columns[Date].texts.push_back(LocalCalendar::Text(event.time, "%d.%m.%Y"));
    columns[ClockTime].texts.push_back(LocalCalendar::Text(event.time, "%H:%M:%S"));
    columns[Level].numbers.push_back(event.level);
    columns[LevelText].texts.emplace_back(levelText(event.level));
    columns[Type].numbers.push_back(event.type);
    columns[Source].texts.push_back(event.source);
    columns[Text].texts.push_back(event.text);
    columns[User].texts.push_back(event.user);
    columns[Old].texts.push_back(event.oldValue);
    columns[New].texts.push_back(event.newValue);
    columns[Priority].numbers.push_back(event.priority);
    ++m_table.rows;
}

} // namespace Nodes
