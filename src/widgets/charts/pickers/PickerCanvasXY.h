#pragma once

#include "widgets/charts/pickers/IPickerCanvas.h"

namespace Widgets {

class CursorMarker;
class qwidgetChartBasicSerie;

/// Cursor of XY plots: on every series the sample nearest on the screen, within reach of a finger,
/// told with both coordinates.
class WIDGETS_EXPORT PickerCanvasXY : public IPickerCanvas
{
    Q_OBJECT

public:
    static constexpr int Reach = 40; ///< pixels

    using IPickerCanvas::IPickerCanvas;

    void createMarkers() override;
    /// A marker at that point of the series, in its axes.
    void appendMarker(qwidgetChartBasicSerie *serie, QPointF point);

protected:
    void select(const QPointF &pos) override;

private:
    std::vector<const CursorMarker *> m_points;
    enCursor m_drawn = FirstCursor; // whose markers are being made
};

} // namespace Widgets
