#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/SheetPlan.h"

namespace Nodes {
class ConfigNode;
}

namespace Editor {

/// One alarm of a limit for each of many signals, as an engineer writes it.
struct LimitAlarm
{
    std::string type;     ///< HH, H, L, LL
    std::string limit;    ///< a number, or with "%" a share of the signal's range
    std::string priority; ///< 1 to 4
    std::string text; ///< may hold {имя}, {описание}, {предел}, {единица}
};

/// Alarms of many signals at once. GUI thread.
namespace LimitAlarms {

/// The table, with a header, that gives each of the signals its alarms below it: named by their
/// type, so that those that are there are changed. Signals whose range does not tell what a share
/// of it is are refused. `deadband` as a limit is written, `delay` in ms.
Nodes::TextTable makeTable(const Nodes::ConfigNode &scope, const Nodes::NodeLinks &nodes,
                           const std::vector<LimitAlarm> &alarms, const std::string &deadband,
                           int delay, std::vector<Nodes::SheetRefusal> &refusals);

} // namespace LimitAlarms

} // namespace Editor
