#include "widgets/charts/multiaxis/MultiAxisScales.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"

namespace Widgets {

ExtraAxis *MultiAxisScales::extraAxis(QwtAxisId axis) const
{
    if (!QwtAxis::isValid(axis.pos) || axis.id < 1)
        return nullptr;
    const auto &further = extraAxes(axis.pos);
    return std::size_t(axis.id) <= further.size() ? further[std::size_t(axis.id) - 1].get()
                                                  : nullptr;
}

} // namespace Widgets
