#pragma once

#include "nodes/NodesExport.h"
#include "nodes/reports/time/ReportPeriod.h"
#include "nodes/values/Result.h"

#include <string>

namespace Nodes {

class ConfigNode;
class ValidationResults;

/// Where files of reports go and what they are called.
namespace ReportFileRules {

/// Name of the file of that period, without ending: {report} {shift} {yyyy} {MM} {dd} {HH} {mm}
/// {ww} of `pattern` filled in; what no file system takes is replaced.
NODES_EXPORT std::string NameOf(const std::string &pattern, const std::string &report,
                                const ReportSpan &span, const ShiftPlan &shifts);
/// `folder` below `reports` in the data directory of the station, or, where it begins with a
/// ${name}, what the station is started with. AccessDenied for a path that leads elsewhere:
/// projects may not write wherever they like. NotFound for an unknown name, NotAvailable while no
/// station runs.
[[nodiscard]] NODES_EXPORT Result FindFolder(const ConfigNode &node, const std::string &folder,
                                             std::string &found);
/// Reports such a folder in a project check.
NODES_EXPORT void CheckFolder(const ConfigNode &node, const std::string &folder,
                              ValidationResults &results);

} // namespace ReportFileRules

} // namespace Nodes
