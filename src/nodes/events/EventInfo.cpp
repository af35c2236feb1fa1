#include "nodes/events/EventInfo.h"

#include <array>

namespace Nodes {

namespace {

struct CodeName
{
    int code;
    const char *russian;
};

constexpr std::array levels{
    CodeName{LevelCritical, "Критический"},   CodeName{LevelAlarm, "Тревога"},
    CodeName{LevelWarning, "Предупреждение"}, CodeName{LevelAcknowledge, "Квитирование"},
    CodeName{LevelInformation, "Информация"}, CodeName{LevelSecurity, "Безопасность"},
    CodeName{LevelAction, "Действие"},        CodeName{LevelDebug, "Отладка"},
};

constexpr std::array types{
    CodeName{TypeMessage, "Сообщение"},
    CodeName{TypeAlarmActive, "Тревога возникла"},
    CodeName{TypeAlarmReturned, "Тревога снята"},
    CodeName{TypeAlarmState, "Состояние тревоги"},
    CodeName{TypeAcknowledgement, "Квитирование"},
    CodeName{TypeSystemState, "Состояние системы"},
    CodeName{TypeSecurityEvent, "Доступ"},
};

constexpr std::array alarmStates{
    CodeName{int(AlarmState::ActiveUnacked), "Активные неквитированные"},
    CodeName{int(AlarmState::ActiveAcked), "Активные квитированные"},
    CodeName{int(AlarmState::ReturnedUnacked), "Снятые неквитированные"},
    CodeName{int(AlarmState::Normal), "Норма"},
    CodeName{int(AlarmState::Shelved), "Отложенные"},
    CodeName{int(AlarmState::Suppressed), "Подавленные"},
    CodeName{int(AlarmState::OutOfService), "Выведенные из работы"},
    CodeName{int(AlarmState::AwaitingReset), "Ожидающие сброса"},
};

template <std::size_t Count> std::string nameOf(const std::array<CodeName, Count> &names, int code)
{
    for (const CodeName &name : names) {
        if (name.code == code)
            return name.russian;
    }
    return std::to_string(code);
}

} // namespace

bool EventInfo::Update(const BasicEvent &event)
{
    if (event == m_event)
        return false;
    m_event = event;
    return true;
}

std::string EventInfo::GetEventLevel() const
{
    return nameOf(levels, m_event.level);
}

std::string EventInfo::GetEventType() const
{
    return nameOf(types, m_event.type);
}

std::string EventInfo::GetGroupString() const
{
    if (m_event.alarmState == AlarmState::None)
        return "События";
    std::string group = nameOf(alarmStates, int(m_event.alarmState));
    if (m_event.priority > 0)
        group += ", приоритет " + std::to_string(m_event.priority);
    return group;
}

} // namespace Nodes
