#include "nodes/drivers/SignalSink.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

#include <cmath>

namespace Nodes {

namespace {

Result wrongType(const SignalValue &value, const char *wanted)
{
    return Result(Result::WrongType, "'" + value.ToString() + "' is no " + wanted);
}

SignalValue toNumber(enSignalValueType type, const SignalValue &value)
{
    const double number = value.ToDouble();
    if (std::isnan(number))
        return wrongType(value, "number");
    switch (type) {
    case enSignalValueType::Int:
        return value.ToInt();
    case enSignalValueType::ULong:
        return number < 0 ? SignalValue(wrongType(value, "unsigned number"))
                          : SignalValue(value.ToULong());
    default:
        return number;
    }
}

SignalValue toBool(const SignalValue &value)
{
    const bool isWord = value.ToString() == "true" || value.ToString() == "false";
    if (!isWord && std::isnan(value.ToDouble()))
        return wrongType(value, "logical value");
    return value.ToBool();
}

} // namespace

SignalSink::SignalSink(const BasicSignal &signal)
    : m_cell(signal.GetCell()), m_path(signal.GetPath()), m_type(signal.GetValueType())
{
}

SignalValue SignalSink::ToType(enSignalValueType type, const SignalValue &value)
{
    if (value.GetType() == type || value.IsError())
        return value;
    if (value.IsEmpty())
        return Result(Result::NotAvailable, "no value");
    switch (type) {
    case enSignalValueType::String:
        return value.ToString();
    case enSignalValueType::Bool:
        return toBool(value);
    default:
        return toNumber(type, value);
    }
}

void SignalSink::Publish(const SignalValue &value, Timestamp source) const
{
    SignalValue typed = ToType(m_type, value);
    const Timestamp now = Clock::Current().Now();
    typed.SetTimes(source != 0 ? source : now, now);
    m_cell->Publish(std::move(typed));
}

void SignalSink::Fail(const Result &reason) const
{
    m_cell->Publish(reason);
}

void SignalSink::Lose(const Result &reason) const
{
    // An older error would name a cause that is no longer the true one.
    if (m_cell->Value().IsError())
        Fail(reason);
    else
        m_cell->Degrade(Quality::Bad, reason);
}

SignalValue SignalSink::GetValue() const
{
    return m_cell->Value();
}

} // namespace Nodes
