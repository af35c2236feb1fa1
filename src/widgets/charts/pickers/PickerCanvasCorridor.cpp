#include "widgets/charts/pickers/PickerCanvasCorridor.h"

namespace Widgets {

QString PickerCanvasCorridor::label(const CursorReading &reading) const
{
    if (!reading.range)
        return PickerCanvas::label(reading);
    return QStringLiteral("mid: %1; \nmin: %2; max: %3")
        .arg(number(reading, reading.point.y()), number(reading, reading.range->first),
             number(reading, reading.range->second));
}

} // namespace Widgets
