#pragma once

#include <limits>
#include <string>

namespace Nodes {
class BasicSignal;
}

namespace Host {

/// What the generated history of one signal is like. Plain value.
struct SignalProfile
{
    enum class Kind {
        Process,  ///< follows the day, wanders, is noisy
        Setpoint, ///< holds for hours, is changed by a step now and then
        State,    ///< mostly `mean`, leaves it `swing` times a week for some minutes
        Duty,     ///< one of two that take turns by day: `mean` while it has its turn, else 0
        Counter,  ///< counts up to `mean` at the end, by `swing` an hour
        Constant  ///< always the same
    };

    Kind kind = Kind::Process;
    double mean = 0;
    double swing = 0; ///< how far the day takes it from the mean; negative: down when it is warm
    double noise = 0; ///< standard deviation of what is measured
    /// While what it belongs to is down; NaN: it does not care.
    double down = std::numeric_limits<double>::quiet_NaN();
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();
    int decimals = 1;       ///< it is measured with
    bool isSecond = false;  ///< of two that take turns
    bool isLogical = false; ///< values are true and false
    bool isText = false;    ///< values are `text`
    std::string text = "Норма";

    /// Told from range, unit, type, name and alarm limits of the signal.
    static SignalProfile guess(const Nodes::BasicSignal &signal);
};

} // namespace Host
