#pragma once

#include <cstddef>

namespace Nodes {

struct AlarmFigures;
struct ReportTable;

/// Columns of a report's table made of how the alarms of a period were.
namespace AlarmColumns {

void AddMeasures(ReportTable &table, const AlarmFigures &figures);
/// Alarms that were raised, those raised most often first; `most` of them.
void AddFrequent(ReportTable &table, const AlarmFigures &figures, std::size_t most);
void AddTimeline(ReportTable &table, const AlarmFigures &figures);
/// Areas in which alarms were raised, those with the most first; `most` of them.
void AddAreas(ReportTable &table, const AlarmFigures &figures, std::size_t most);
/// Every shift of the figures.
void AddShifts(ReportTable &table, const AlarmFigures &figures);

} // namespace AlarmColumns

} // namespace Nodes
