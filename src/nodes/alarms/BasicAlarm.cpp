#include "nodes/alarms/BasicAlarm.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

namespace Nodes {

void BasicAlarm::Describe(KindBuilder &builder)
{
    constexpr double day = 86400000;
    builder.Property<&BasicAlarm::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&BasicAlarm::m_onDelay>(Prop::OnDelay, "On delay, ms",
                                          "Задержка возникновения, мс")
        .Range(0, day)
        .Property<&BasicAlarm::m_offDelay>(Prop::OffDelay, "Off delay, ms", "Задержка снятия, мс")
        .Range(0, day)
        .Property<&BasicAlarm::m_priority>(Prop::Priority, "Priority", "Приоритет")
        .Range(1, 4)
        .Property<&BasicAlarm::m_text>(Prop::Text, "Text", "Текст")
        .Property<&BasicAlarm::m_isAckRequired>(Prop::AckRequired, "Acknowledgement required",
                                                "Требует квитирования")
        .Property<&BasicAlarm::m_sound>(Prop::Sound, "Sound", "Звук")
        .Hint("wav");
}

BasicSignal *BasicAlarm::GetSignal() const
{
    ConfigNode *node = m_signal.isEmpty() ? GetParent() : m_signal.GetNode();
    return dynamic_cast<BasicSignal *>(node);
}

std::string BasicAlarm::GetText() const
{
    if (!m_text.empty())
        return m_text;
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetName() + ": " + GetName() : GetName();
}

void BasicAlarm::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (!GetSignal())
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "signal"),
                    "Тревога «" + GetPath() +
                        "»: сигнал не указан, тревога не следит ни за чем. Укажите сигнал или "
                        "перенесите тревогу под сигнал.");
}

AuthPrivArray BasicAlarm::GetAvailablePrivs() const
{
    AuthPrivArray privileges = ConfigNode::GetAvailablePrivs();
    privileges.insert(privileges.end(), {PrivilegeAcknowledge, PrivilegeShelve});
    return privileges;
}

} // namespace Nodes
