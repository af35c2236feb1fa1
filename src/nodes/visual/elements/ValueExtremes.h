#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Timestamp.h"

#include <mutex>
#include <optional>

namespace Nodes {

class SignalValue;

/// Smallest and largest good number since a moment. Any thread.
class NODES_EXPORT ValueExtremes
{
public:
    struct State
    {
        std::optional<double> minimum; ///< nothing before the first good number
        std::optional<double> maximum;
        Timestamp since = 0;
    };

    ValueExtremes() { Reset(); }
    /// Values that are not good, and no numbers, do not count.
    void Take(const SignalValue &value);
    void Reset();
    State Get() const;

private:
    mutable std::mutex m_mutex;
    State m_state; // guarded
};

} // namespace Nodes
