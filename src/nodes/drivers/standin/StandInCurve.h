#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/SignalValue.h"

namespace Nodes {

class BasicSignal;

/// Made-up course of a signal: the same for the same node in every run. Numbers wander slowly
/// through the middle of their range and never leave it, contacts close for a few seconds every few
/// minutes, what can be written holds still until it is. A value; any thread.
class NODES_EXPORT StandInCurve
{
public:
    /// GUI thread.
    explicit StandInCurve(const BasicSignal &signal);

    /// What it reads `seconds` after the start, of the signal's own type.
    SignalValue At(double seconds) const;
    /// Holds its value instead of wandering.
    bool isSteady() const { return m_isSteady; }

private:
    double numberAt(double seconds) const;
    double fraction(unsigned salt) const;

    enSignalValueType m_type;
    double m_minimum;
    double m_maximum;
    int m_decimals;
    bool m_isSteady;
    unsigned long m_seed;
};

} // namespace Nodes
