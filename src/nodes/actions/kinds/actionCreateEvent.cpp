#include "nodes/actions/kinds/actionCreateEvent.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionCreateEvent::Kind()
{
    return KindBuilder::For<actionCreateEvent>(NodeType::enNodeSubtype(0x10006),
                                               "actionCreateEvent", "Create event",
                                               "Запись события")
        .Property<&actionCreateEvent::m_text>(16040, "text", "Text", "Текст")
        .Property<&actionCreateEvent::m_level>(16041, "level", "Level", "Уровень")
        .Choice(LevelCritical, "critical", "Критический")
        .Choice(LevelAlarm, "alarm", "Тревога")
        .Choice(LevelWarning, "warning", "Предупреждение")
        .Choice(LevelInformation, "information", "Сообщение")
        .Choice(LevelAction, "action", "Действие оператора")
        .Property<&actionCreateEvent::m_source>(16042, "source", "Source", "Источник")
        .Property<&actionCreateEvent::m_sourceNode>(16043, "node", "Source node", "Узел-источник");
}

Result actionCreateEvent::CreateEvent() const
{
    if (m_text.empty())
        return Result(this, Result::InvalidArgument, "text");
    if (m_sourceNode.isValid())
        return StoreMessage(EventLevel(m_level), m_text, m_sourceNode);
    return StoreMessage(EventLevel(m_level), m_text, m_source);
}

} // namespace Nodes
