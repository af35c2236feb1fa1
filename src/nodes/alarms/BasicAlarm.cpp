#include "nodes/alarms/BasicAlarm.h"

#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/alarms/engine/AlarmInputs.h"
#include "nodes/alarms/suppression/SuppressionScripts.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"

#include <algorithm>

namespace Nodes {

namespace {

const ConfigNode *folderAbove(const ConfigNode *node)
{
    do {
        node = node->GetParent();
    } while (node && node->GetNodeType() != NodeType(NodeType::SubtypeFolder));
    return node;
}

} // namespace

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
        .Hint("wav")
        .Property<&BasicAlarm::m_isLatched>(Prop::Latched, "Latched, needs a reset",
                                            "С фиксацией: требует сброса")
        .Property<&BasicAlarm::m_realarm>(Prop::Realarm, "Announced again after, min",
                                          "Повторять неквитированную через, мин")
        .Range(0, 1440)
        .Property<&BasicAlarm::m_firstUpGroup>(Prop::FirstUpGroup, "First-up group",
                                               "Группа первопричины")
        .Hint("shared");
    describeSuppression(builder);
    describeGuidance(builder);
}

void BasicAlarm::describeSuppression(KindBuilder &builder)
{
    builder
        .Property<&BasicAlarm::m_suppressWhen>(Prop::SuppressWhen, "Suppressed while",
                                               "Подавлять по сигналу")
        .Refers({NodeType::TypeSignal})
        .Property<&BasicAlarm::m_isSuppressInverted>(
            Prop::SuppressInverted, "While the signal is false", "Подавлять, когда сигнал ложен")
        .Property<&BasicAlarm::m_suppressText>(Prop::SuppressText, "Suppression in words",
                                               "Условие подавления словами")
        .Property<&BasicAlarm::m_suppressScript>(Prop::SuppressScript, "Suppression script",
                                                 "Сценарий подавления")
        .Hint("condition")
        .Property<&BasicAlarm::m_suppressInputs>(Prop::SuppressInputs,
                                                 "Signals of the script: s1, s2, ...",
                                                 "Сигналы сценария: s1, s2, ...")
        .Refers({NodeType::TypeSignal});
}

void BasicAlarm::describeGuidance(KindBuilder &builder)
{
    builder.Property<&BasicAlarm::m_area>(Prop::Area, "Area", "Участок")
        .Hint("shared")
        .Property<&BasicAlarm::m_cause>(Prop::Cause, "Cause", "Возможная причина")
        .Hint("multiline")
        .Property<&BasicAlarm::m_consequence>(Prop::Consequence, "Consequence",
                                              "Последствия бездействия")
        .Hint("multiline")
        .Property<&BasicAlarm::m_response>(Prop::Response, "Response", "Действия оператора")
        .Hint("multiline")
        .Property<&BasicAlarm::m_responseTime>(Prop::ResponseTime, "Time to respond, min",
                                               "Время на действия, мин")
        .Range(0, 1440);
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

BasicSignal *BasicAlarm::GetSuppressor() const
{
    return dynamic_cast<BasicSignal *>(m_suppressWhen.GetNode());
}

std::string BasicAlarm::GetSuppressReason() const
{
    const std::string byDesign = "по проекту: ";
    if (!m_suppressText.empty())
        return byDesign + m_suppressText;
    if (!m_suppressScript.empty())
        return byDesign + m_suppressScript;
    const BasicSignal *signal = GetSuppressor();
    if (!signal)
        return {};
    const std::string &name =
        signal->GetDescription().empty() ? signal->GetName() : signal->GetDescription();
    return byDesign + "«" + name + "» = " + (m_isSuppressInverted ? "нет" : "да");
}

bool BasicAlarm::isSuppressorGone() const
{
    if (m_suppressScript.empty())
        return !m_suppressWhen.isEmpty() && !GetSuppressor();
    return std::any_of(m_suppressInputs.begin(), m_suppressInputs.end(), [](const NodeLink &input) {
        return !dynamic_cast<const BasicSignal *>(input.GetNode());
    });
}

AlarmInputs BasicAlarm::MakeInputs(SuppressionScripts &scripts) const
{
    AlarmInputs inputs;
    inputs.settings = AlarmSettings::Of(*this);
    inputs.cell = GetSignal()->GetCell();
    if (const BasicSignal *reference = GetReference())
        inputs.reference = reference->GetCell();
    if (!m_suppressScript.empty())
        inputs.suppressor = scripts.Add(makeScript());
    else if (const BasicSignal *suppressor = GetSuppressor())
        inputs.suppressor = suppressor->GetCell();
    inputs.isSuppressorInverted = m_isSuppressInverted;
    return inputs;
}

SuppressionScripts::Script BasicAlarm::makeScript() const
{
    SuppressionScripts::Script script{GetNodeLink(), m_suppressScript, {}};
    for (const NodeLink &link : m_suppressInputs) {
        const auto *signal = dynamic_cast<const BasicSignal *>(link.GetNode());
        script.inputs.push_back(signal ? signal->GetCell() : nullptr);
    }
    return script;
}

std::string BasicAlarm::GetArea() const
{
    if (!m_area.empty())
        return m_area;
    const BasicSignal *signal = GetSignal();
    const ConfigNode *folder = folderAbove(this);
    if (!folder && signal)
        folder = folderAbove(signal);
    return folder ? folder->GetName() : std::string();
}

void BasicAlarm::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    const std::string alarm = "Тревога «" + GetPath() + "»: ";
    if (!GetSignal())
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "signal"),
                    alarm + "сигнал не указан, тревога не следит ни за чем. Укажите сигнал или "
                            "перенесите тревогу под сигнал.");
    if (isSuppressorGone())
        results.Add(GetNodeLink(), Result(this, Result::NotFound, Prop::SuppressWhen.key),
                    alarm + "сигнала, по которому она подавляется, нет: тревога не подавляется "
                            "никогда. Укажите другой сигнал или очистите условие.");
    if (m_cause.empty() && m_consequence.empty() && m_response.empty())
        results.Add(GetNodeLink(), Result(),
                    alarm + "совет: опишите причину, последствия и действия оператора.");
}

AuthPrivArray BasicAlarm::GetAvailablePrivs() const
{
    AuthPrivArray privileges = ConfigNode::GetAvailablePrivs();
    privileges.insert(privileges.end(), {PrivilegeAcknowledge, PrivilegeShelve});
    return privileges;
}

} // namespace Nodes
