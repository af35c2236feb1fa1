#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/pickers/CursorReading.h"

#include <optional>

class QwtPlotItem;

namespace Widgets {

/// What a series holds near a place of its plot: among what it draws on the canvas now.
namespace SampleSearch {

/// Index of the sample nearest in x to that pixel column of the canvas, -1 when there is none on
/// it. Samples of equal distance: the earlier one.
WIDGETS_EXPORT int nearest(const ISerie &serie, int column);
/// The reading there; nothing for a series that has none there or whose sample is a gap. `range`
/// is set where several samples share the column, or where the series has a tube.
WIDGETS_EXPORT std::optional<CursorReading> at(ISerie &serie, int column);

} // namespace SampleSearch

} // namespace Widgets
