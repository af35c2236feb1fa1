#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/SignalValue.h"

#include <memory>
#include <string>

namespace Nodes {

class BasicSignal;
class ValueCell;

/// What a driver's thread holds of a signal: its cell, type, deadband and path, taken from the node
/// when the driver starts. Made on the GUI thread, used on any.
class NODES_EXPORT SignalSink
{
public:
    explicit SignalSink(const BasicSignal &signal);

    /// Publishes the value as the signal's type, measured at `source` (wall microseconds, 0: now).
    /// A value that does not fit the type is published as the error WrongType; one within the
    /// signal's deadband only keeps the signal fresh, see ValueCell::Publish.
    void Publish(const SignalValue &value, Timestamp source = 0) const;
    /// Publishes an error in place of a value: this signal alone cannot be delivered.
    void Fail(const Result &reason) const;
    /// Its source is gone: keeps the last value, marked Bad. Where there is none, the reason.
    void Lose(const Result &reason) const;

    SignalValue GetValue() const;
    const std::string &GetPath() const { return m_path; }
    enSignalValueType GetType() const { return m_type; }

private:
    std::shared_ptr<ValueCell> m_cell;
    std::string m_path;
    enSignalValueType m_type;
    double m_deadband;
};

} // namespace Nodes
