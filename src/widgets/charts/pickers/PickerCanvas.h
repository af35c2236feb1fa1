#pragma once

#include "widgets/charts/pickers/IPickerCanvas.h"

namespace Widgets {

class CursorLine;
class CursorMarker;

/// Cursor of trends: on every series the sample nearest in time, and a line with the time.
class WIDGETS_EXPORT PickerCanvas : public IPickerCanvas
{
    Q_OBJECT

public:
    using IPickerCanvas::IPickerCanvas;

    void createMarkers() override;

protected:
    void select(const QPointF &pos) override;

    /// Label of a point marker: value and unit, or the value with the extremes of what is drawn in
    /// the same column of pixels.
    virtual QString label(const CursorReading &reading) const;
    /// As labels tell numbers: without the offset of the series.
    static QString number(const CursorReading &reading, double y);

private:
    bool isTimeAxis(enCursor cursor) const;
    const CursorMarker *addPoint(enCursor cursor, const CursorReading &reading);
    const CursorLine *addLine(enCursor cursor);
};

} // namespace Widgets
