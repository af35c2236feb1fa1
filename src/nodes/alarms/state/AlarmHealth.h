#pragma once

#include "nodes/values/Timestamp.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace Nodes {

/// How alarming keeps up: facts for whoever watches the station. A copy; counters since the start
/// of the process, times of the wall clock.
struct AlarmHealth
{
    std::uint64_t announced = 0;  ///< changes told to the subscribers of ConnectAlarm
    std::uint64_t journalled = 0; ///< entries that the journal took
    std::uint64_t refused = 0;    ///< entries that it did not take: they are lost
    std::size_t unannounced = 0;  ///< records that wait for their turn

    bool isKeeping = false;    ///< states are meant to be kept over a restart
    std::size_t unkept = 0;    ///< alarms whose latest state is not in the file
    Timestamp unkeptSince = 0; ///< of the oldest change among them; 0: none
    Timestamp unkeptFor = 0;   ///< microseconds since then, whatever the clock was set to
    Timestamp lastKept = 0;    ///< last successful write; 0: none
    std::string trouble;       ///< why the last write failed, in English; "" after a success
};

} // namespace Nodes
