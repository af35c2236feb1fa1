#pragma once

#include <string>

namespace Widgets {

/// How many alarms an area has.
struct AlarmArea
{
    std::string name; ///< "": alarms without one
    int all = 0;
    int waiting = 0;
    int urgent = 0; ///< highest priority among those that wait; 0: none waits
    bool isFolded = false;
};

} // namespace Widgets
