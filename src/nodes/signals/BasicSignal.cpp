#include "nodes/signals/BasicSignal.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/model/ConfigNodeJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/model/services/ModelServices.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/WriteRoute.h"
#include "nodes/signals/WriteRoutes.h"
#include "nodes/signals/WriteTarget.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

BasicSignal::BasicSignal() : m_cell(std::make_shared<ValueCell>()) {}
BasicSignal::~BasicSignal() = default;

void BasicSignal::Describe(KindBuilder &builder)
{
    builder.Property<&BasicSignal::m_valueType>(Prop::Type, "Value type", "Тип значения")
        .Choice(int(enSignalValueType::String), "string", "Строка")
        .Choice(int(enSignalValueType::Bool), "bool", "Логический")
        .Choice(int(enSignalValueType::Int), "int", "Целый")
        .Choice(int(enSignalValueType::Double), "double", "Вещественный")
        .Choice(int(enSignalValueType::ULong), "ulong", "Целый без знака")
        .Property<&BasicSignal::m_unit>(Prop::Unit, "Unit", "Единица измерения")
        .Hint("shared")
        .Property<&BasicSignal::m_decimals>(Prop::Decimals, "Decimals", "Знаков после запятой")
        .Range(0, 9)
        .Property<&BasicSignal::m_minimum>(Prop::Minimum, "Minimum", "Нижний предел")
        .Property<&BasicSignal::m_maximum>(Prop::Maximum, "Maximum", "Верхний предел")
        .Property<&BasicSignal::m_isWritable>(Prop::Writable, "Writable", "Разрешена запись")
        .Property<&BasicSignal::m_staleAfter>(Prop::StaleAfter, "Stale after, ms",
                                              "Устаревает через, мс")
        .Range(0, 86400000)
        .Property<&BasicSignal::m_deadband>(Prop::Deadband, "Deadband", "Зона нечувствительности")
        .Range(0, 1e12)
        .Children({NodeType::TypeAlarm});
}

SignalValue BasicSignal::GetValue() const
{
    return m_cell->Value();
}

SignalValue BasicSignal::GetShownValue() const
{
    return IsForbiddenToView(*this) ? SignalValue(Result(this, Result::AccessDenied)) : GetValue();
}

SignalValue BasicSignal::Convert(const SignalValue &value) const
{
    const SignalValue converted = value.ConvertedTo(GetValueType());
    if (value.IsError() || converted.IsError())
        return Result(this, Result::WrongType, GetName() + " = " + value.ToString());
    return converted;
}

Result BasicSignal::checkWrite(const SignalValue &converted) const
{
    if (!m_isWritable)
        return Result(this, Result::ReadOnly, GetName());
    if (converted.IsError())
        return converted.GetError();
    const bool isAnalog = converted.GetType() != enSignalValueType::Bool && converted.IsNumber();
    const double number = converted.ToDouble();
    if (isAnalog && m_minimum < m_maximum && !(number >= m_minimum && number <= m_maximum))
        return Result(this, Result::OutOfRange,
                      GetName() + " = " + converted.ToString() + ", " + FormatDouble(m_minimum) +
                          ".." + FormatDouble(m_maximum));
    return Result();
}

Result BasicSignal::WriteValue(const SignalValue &value)
{
    const SignalValue old = GetValue();
    const SignalValue converted = Convert(value);
    std::shared_ptr<WriteRoute> route;
    Result result = CheckAccess(PrivilegeWrite, *this);
    if (result)
        result = WriteRoutes::Find(*this, route);
    if (result)
        result = checkWrite(converted);
    if (result)
        result = route->Write(*this, converted);
    const SignalValue &wanted = converted.IsError() ? value : converted;
    if (!result || IsJournalled())
        StoreAct(*this, result,
                 {"Запись значения", "Запись отклонена", old.ToString(), wanted.ToString()});
    return result;
}

void BasicSignal::SetWriteTarget(std::weak_ptr<WriteTarget> target)
{
    m_target = std::move(target);
}

Result BasicSignal::DoWrite(const SignalValue &value)
{
    const std::shared_ptr<WriteTarget> target = m_target.lock();
    if (!target)
        return Result(this, Result::NotAvailable, "no driver has taken over " + GetName());
    if (GetNodeLink().GetNode() != this)
        return Result(this, Result::NotAvailable, GetName() + " has left its project");
    return target->Write(*this, value);
}

// What never came needs no telling: nothing that looks good stands anywhere.
void BasicSignal::degrade(Quality quality) const
{
    if (!GetValue().IsEmpty())
        m_cell->Degrade(quality, Result(this, Result::NotFound));
}

void BasicSignal::OnLeftTree() const
{
    degrade(Quality::Bad);
}

// Signals that no driver feeds are good again; the others wait for theirs.
void BasicSignal::OnEnteredTree() const
{
    if (GetOrigin() == SignalOrigin::Process)
        degrade(Quality::Good);
}

void BasicSignal::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    if (m_staleAfter > 0 && GetOrigin() != SignalOrigin::Polled)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "staleAfter"),
                    GetName() + ": значение обновляется только при изменении и не устаревает; "
                                "уберите «Устаревает через»");
    validateDeadband(results);
}

void BasicSignal::validateDeadband(ValidationResults &results) const
{
    std::string reason;
    if (GetOrigin() == SignalOrigin::Process)
        reason = "значение не измеряется, а меняется записью";
    else if (m_valueType == int(enSignalValueType::String) ||
             m_valueType == int(enSignalValueType::Bool))
        reason = "она есть только у чисел";
    if (m_deadband > 0 && !reason.empty())
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "deadband"),
                    GetName() + ": зона нечувствительности не действует: " + reason);
}

AuthPrivArray BasicSignal::GetAvailablePrivs() const
{
    AuthPrivArray privileges = ConfigNode::GetAvailablePrivs();
    privileges.insert(privileges.end(), {PrivilegeWrite});
    return privileges;
}

} // namespace Nodes
