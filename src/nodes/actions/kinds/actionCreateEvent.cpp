#include "nodes/actions/kinds/actionCreateEvent.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionCreateEvent::Kind()
{
    return KindBuilder::For<actionCreateEvent>("actionCreateEvent", "Create event",
                                               "Запись события")
        .Property<&actionCreateEvent::m_text>(Prop::Text, "Text", "Текст")
        .Property<&actionCreateEvent::m_level>(Prop::Level, "Level", "Уровень")
        .Choice(LevelCritical, "critical", "Критический")
        .Choice(LevelAlarm, "alarm", "Тревога")
        .Choice(LevelWarning, "warning", "Предупреждение")
        .Choice(LevelInformation, "information", "Сообщение")
        .Choice(LevelAction, "action", "Действие оператора")
        .Property<&actionCreateEvent::m_source>(Prop::Source, "Source", "Источник")
        .Hint("shared")
        .Property<&actionCreateEvent::m_sourceNode>(Prop::Node, "Source node", "Узел-источник")
        .Hint("any");
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
