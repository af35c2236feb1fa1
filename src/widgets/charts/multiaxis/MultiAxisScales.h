#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/multiaxis/QwtAxisId.h"

#include <memory>
#include <vector>

namespace Widgets {

class ExtraAxis;

/// The further axes of a plot, as its items and its layout know them; see MultiAxisPlot.
class WIDGETS_EXPORT MultiAxisScales
{
public:
    /// Of a side, from the canvas outwards.
    [[nodiscard]] virtual const std::vector<std::unique_ptr<ExtraAxis>> &
    extraAxes(int position) const = 0;
    /// True while Qwt scales its four axes, which data of further ones must not stretch.
    [[nodiscard]] virtual bool isScalingFirstAxes() const = 0;
    /// Null when the axis is one of Qwt's or does not exist.
    [[nodiscard]] ExtraAxis *extraAxis(QwtAxisId axis) const;

protected:
    MultiAxisScales() = default;
    ~MultiAxisScales() = default;
};

} // namespace Widgets
