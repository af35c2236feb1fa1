#pragma once

#include "widgets/charts/pickers/PickerCanvas.h"

namespace Widgets {

/// Cursor of corridors: a sample is told with the edges of its tube.
class WIDGETS_EXPORT PickerCanvasCorridor : public PickerCanvas
{
    Q_OBJECT

public:
    using PickerCanvas::PickerCanvas;

protected:
    QString label(const CursorReading &reading) const override;
};

} // namespace Widgets
