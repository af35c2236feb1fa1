#include "nodes/drivers/SignalSink.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

namespace Nodes {

SignalSink::SignalSink(const BasicSignal &signal)
    : m_cell(signal.GetCell()),
      m_path(signal.GetPath()),
      m_type(signal.GetValueType()),
      m_deadband(signal.GetDeadband())
{
}

void SignalSink::Publish(const SignalValue &value, Timestamp source) const
{
    SignalValue typed = value.ConvertedTo(m_type);
    const Timestamp now = Clock::Current().Now();
    typed.SetTimes(source != 0 ? source : now, now);
    m_cell->Publish(std::move(typed), m_deadband);
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
