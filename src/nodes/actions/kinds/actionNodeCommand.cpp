#include "nodes/actions/kinds/actionNodeCommand.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <algorithm>

namespace Nodes {

namespace {

const char *nameOf(actionNodeCommand::enCommand command)
{
    switch (command) {
    case actionNodeCommand::CommandStart:
        return "Пуск";
    case actionNodeCommand::CommandStop:
        return "Останов";
    case actionNodeCommand::CommandReset:
        return "Перезапуск";
    default:
        return "Команда тревоге";
    }
}

bool isSteerable(const ConfigNode &node)
{
    const NodeType::enNodeType family = node.GetNodeType().GetFamily();
    return family == NodeType::TypeDriver || family == NodeType::TypeTimer;
}

NodeLinks alarmsOf(const ConfigNode &target)
{
    NodeLinks alarms;
    NodeLinks nodes = target.GetNodes(true);
    nodes.insert(nodes.begin(), NodeLink(&target));
    for (const NodeLink &link : nodes) {
        if (dynamic_cast<const BasicAlarm *>(link.GetNode()))
            alarms.push_back(link);
    }
    return alarms;
}

/// Refusals count more than "nothing to do", which among many alarms is no failure.
Result graver(const Result &left, const Result &right)
{
    const auto weight = [](const Result &result) {
        return result ? 1 : result == Result::NotFound ? 0 : 2;
    };
    return weight(right) > weight(left) ? right : left;
}

} // namespace

actionNodeCommand::actionNodeCommand() : m_made(Clock::Current().Steady()) {}

KindInfo actionNodeCommand::Kind()
{
    return KindBuilder::For<actionNodeCommand>("actionNodeCommand", "Node command", "Команда узлу")
        .Property<&actionNodeCommand::m_target>(Prop::Target, "Target", "Кому")
        .Hint("any")
        .Property<&actionNodeCommand::m_command>(Prop::Command, "Command", "Команда")
        .Choice(CommandStart, "start", "Запустить")
        .Choice(CommandStop, "stop", "Остановить")
        .Choice(CommandReset, "reset", "Перезапустить")
        .Choice(CommandAcknowledge, "acknowledge", "Квитировать")
        .Choice(CommandShelve, "shelve", "Отложить")
        .Choice(CommandUnshelve, "unshelve", "Вернуть отложенное")
        .Choice(CommandOutOfService, "outOfService", "Вывести из работы")
        .Choice(CommandInService, "inService", "Ввести в работу")
        .Property<&actionNodeCommand::m_seconds>(Prop::Seconds, "Shelved for, s",
                                                 "На сколько отложить, с")
        .Range(1, 86400)
        .Property<&actionNodeCommand::m_comment>(Prop::Comment, "Comment", "Комментарий");
}

Result actionNodeCommand::Send() const
{
    ConfigNode *target = m_target.GetNode();
    if (!target)
        return Result(this, Result::NotFound, GetName() + ": target");
    return GetCommand() <= CommandReset ? steer(*target) : commandAlarms(*target);
}

Result actionNodeCommand::steer(ConfigNode &target) const
{
    const std::string what = std::string("Команда «") + nameOf(GetCommand()) + "»";
    if (!isSteerable(target))
        return Result(&target, Result::WrongType, target.GetPath() + ": no driver and no timer");
    Result result = DemandAccess(PrivilegeCommand, target, what);
    if (result == Result::AccessDenied)
        return result;
    if (GetCommand() != CommandStart)
        result = target.Stop();
    if (result && GetCommand() != CommandStop)
        result = target.Start();
    StoreMessage(result ? LevelAction : LevelWarning,
                 result ? what : what + " не выполнена: " + result.GetResultTranslated(), m_target);
    return result;
}

Result actionNodeCommand::commandAlarms(const ConfigNode &target) const
{
    const NodeLinks alarms = alarmsOf(target);
    Result result(&target, Result::NotFound, target.GetPath() + ": no alarm for the command");
    for (const NodeLink &alarm : alarms)
        result = graver(result, commandAlarm(alarm));
    return result;
}

Result actionNodeCommand::commandAlarm(const NodeLink &alarm) const
{
    const systemCore *core = GetCore();
    systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    if (!alarming)
        return Result(this, Result::NotAvailable, "no alarm subsystem");
    switch (GetCommand()) {
    case CommandAcknowledge:
        return alarming->AcknowledgeSeen(alarm, m_made, m_comment);
    case CommandShelve:
        return alarming->Shelve(alarm, m_seconds);
    case CommandUnshelve:
        return alarming->Unshelve(alarm);
    default:
        return alarming->SetOutOfService(alarm, GetCommand() == CommandOutOfService);
    }
}

void actionNodeCommand::CollectDemands(AccessDemands &demands) const
{
    const ConfigNode *target = m_target.GetNode();
    if (!target || GetCommand() <= CommandReset)
        return demands.push_back({PrivilegeCommand, m_target});
    const auto privilege =
        GetCommand() == CommandAcknowledge ? PrivilegeAcknowledge : PrivilegeShelve;
    // One alarm that takes the command is enough: the others refuse for themselves.
    const NodeLinks alarms = alarmsOf(*target);
    const auto allowed = std::find_if(alarms.begin(), alarms.end(), [&](const NodeLink &alarm) {
        return bool(CheckAccess(privilege, *alarm.GetNode()));
    });
    if (!alarms.empty() && allowed == alarms.end())
        demands.push_back({privilege, alarms.front()});
}

} // namespace Nodes
