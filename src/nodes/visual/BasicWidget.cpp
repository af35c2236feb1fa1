#include "nodes/visual/BasicWidget.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/ElementGroupProperty.h"

namespace Nodes {

BasicWidget::BasicWidget() = default;
BasicWidget::~BasicWidget() = default;

void BasicWidget::Describe(KindBuilder &builder)
{
    const std::vector<unsigned> actions{NodeType::TypeAction, NodeType::TypeArchiverAction};
    builder.Property<&BasicWidget::m_x>(Prop::X, "X", "X")
        .Range(-32768, 32767)
        .Property<&BasicWidget::m_y>(Prop::Y, "Y", "Y")
        .Range(-32768, 32767)
        .Property<&BasicWidget::m_width>(Prop::Width, "Width", "Ширина")
        .Range(0, 32767)
        .Property<&BasicWidget::m_height>(Prop::Height, "Height", "Высота")
        .Range(0, 32767)
        .Property<&BasicWidget::m_zOrder>(Prop::ZOrder, "Z-order", "Порядок")
        .Range(-1000000, 1000000)
        .Property<&BasicWidget::m_isVisible>(Prop::Visible, "Visible", "Видимый")
        .Property<&BasicWidget::m_isSelectable>(Prop::Selectable, "Selectable", "Выделяемый")
        .Property<&BasicWidget::m_isMovable>(Prop::Movable, "Movable", "Перемещаемый")
        .Property<&BasicWidget::m_isDisabled>(Prop::Disabled, "Disabled", "Отключён")
        .Property<&BasicWidget::m_tooltip>(Prop::Tooltip, "Tooltip", "Подсказка")
        .Property<&BasicWidget::m_signal>(Prop::Signal, "Signal", "Сигнал")
        .Refers({NodeType::TypeSignal})
        .Property<&BasicWidget::m_hasAlarmIndication>(Prop::AlarmIndication, "Show alarms",
                                                      "Показывать тревоги")
        .Property(ElementGroupProperty::Descriptor())
        .Property<&BasicWidget::m_onPress>(Prop::OnPress, "On press", "При нажатии")
        .Refers(actions)
        .Property<&BasicWidget::m_onRelease>(Prop::OnRelease, "On release", "При отпускании")
        .Refers(actions)
        .Property<&BasicWidget::m_onEnter>(Prop::OnEnter, "On enter", "При наведении")
        .Refers(actions)
        .Property<&BasicWidget::m_onMove>(Prop::OnMove, "On move", "При движении")
        .Refers(actions)
        .Property<&BasicWidget::m_onLeave>(Prop::OnLeave, "On leave", "При уходе указателя")
        .Refers(actions)
        .Property<&BasicWidget::m_onFocusLoss>(Prop::OnFocusLoss, "On focus loss",
                                               "При потере фокуса")
        .Refers(actions)
        .Property<&BasicWidget::m_afterWrite>(Prop::AfterWrite, "After write", "После записи")
        .Refers(actions);
}

const std::string &BasicWidget::GetGroup() const
{
    return ElementGroupProperty::Of(*this);
}

void BasicWidget::SetPosition(int x, int y)
{
    (void)SetProperty(Prop::X, x);
    (void)SetProperty(Prop::Y, y);
}

BasicSignal *BasicWidget::GetSignal() const
{
    return dynamic_cast<BasicSignal *>(m_signal.GetNode());
}

SignalValue BasicWidget::GetValue() const
{
    if (m_signal.isEmpty())
        return SignalValue();
    const BasicSignal *signal = GetSignal();
    return signal ? signal->GetShownValue()
                  : SignalValue(Result(this, Result::NotFound,
                                       "signal " + std::to_string(m_signal.GetNodeId())));
}

std::string BasicWidget::GetDisplayText(const SignalValue &value) const
{
    return value.ToString();
}

Result BasicWidget::WriteValue(const SignalValue &value)
{
    BasicSignal *signal = GetSignal();
    return signal ? signal->WriteValue(value) : Result(this, Result::NotFound, GetPath());
}

void BasicWidget::CollectDemands(AccessDemands &) const {}

enAccessDeniedAction BasicWidget::findDenial() const
{
    const systemCore *core = GetCore();
    if (!core || core->GetWorkMode() != WorkModeRuntime)
        return AccessDeniedRefuse;
    if (!CheckAccess(PrivilegeView, *this) || m_isForbiddenToView)
        return AccessDeniedHide;
    AccessDemands demands;
    CollectDemands(demands);
    return DenialOf(demands);
}

enAccessDeniedAction BasicWidget::JudgeAccess()
{
    const BasicSignal *signal = GetSignal();
    m_isForbiddenToView = signal && IsForbiddenToView(*signal);
    m_denial = findDenial();
    return m_denial;
}

Result BasicWidget::Start()
{
    return ++m_starts > 1 ? Result() : OnFirstStart();
}

Result BasicWidget::Stop()
{
    return m_starts == 0 || --m_starts > 0 ? Result() : OnLastStop();
}

Result BasicWidget::OnFirstStart()
{
    const Result started = ConfigNode::Start();
    subscribe();
    return started;
}

Result BasicWidget::OnLastStop()
{
    m_subscription.reset();
    return ConfigNode::Stop();
}

void BasicWidget::subscribe()
{
    const BasicSignal *signal = GetSignal();
    if (!signal) {
        m_subscription.reset();
        return;
    }
    m_isForbiddenToView = IsForbiddenToView(*signal);
    if (!m_subscription)
        m_subscription = std::make_unique<ValueSubscription>();
    m_subscription->Connect(signal->GetCell(),
                            [this](const SignalValue &value) { NotifyShown(value); });
}

// Judged before: asking for each value would slow down whoever publishes.
void BasicWidget::NotifyShown(const SignalValue &value) const
{
    NotifyValueChanged(m_isForbiddenToView ? SignalValue(Result(this, Result::AccessDenied))
                                           : value);
}

void BasicWidget::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    if (descriptor.valueId == Prop::Signal && GetState() == NodeState::Running)
        subscribe();
}

} // namespace Nodes
