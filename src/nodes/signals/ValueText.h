#pragma once

#include "nodes/NodesExport.h"

#include <string>

namespace Nodes {

class BasicSignal;
class SignalValue;

/// How values are written for people, the same everywhere: by the decimals and the unit of their
/// signal. Refers to the signal. GUI thread.
class NODES_EXPORT ValueText
{
public:
    /// Without a signal there is one decimal and no unit. `ownDecimals` below 0 leaves them to the
    /// signal.
    explicit ValueText(const BasicSignal *signal, int ownDecimals = -1)
        : m_signal(signal), m_ownDecimals(ownDecimals)
    {
    }

    /// With the decimals, without the unit.
    std::string OfNumber(double number) const;
    /// Reals as a number, anything else as it is; dashes for a bad value: the
    /// last good number is nothing to operate by.
    std::string Of(const SignalValue &value) const;
    /// The same of a value of whatever quality, for where its quality is told in words.
    std::string OfLast(const SignalValue &value) const;
    /// That text with the unit behind it, if there is one.
    std::string WithUnit(std::string text) const;

private:
    const BasicSignal *m_signal;
    int m_ownDecimals;
};

} // namespace Nodes
