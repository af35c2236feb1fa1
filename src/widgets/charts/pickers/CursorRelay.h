#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QPointer>

class QwtPlot;

namespace Widgets {

class IPickerCanvas;

/// Where those who show what the cursors of a plot point at hear of it: pickers come and go as the
/// operator switches between pointing and panning. One per plot, its child. GUI thread.
class WIDGETS_EXPORT CursorRelay : public QObject
{
    Q_OBJECT

public:
    /// Made on first use.
    static CursorRelay &of(QwtPlot &plot);

    /// Null while the plot has none.
    IPickerCanvas *picker() const { return m_picker; }
    /// For pickers.
    void setPicker(IPickerCanvas *picker);

signals:
    /// A cursor was set, moved or taken away.
    void changed();

private:
    explicit CursorRelay(QwtPlot &plot);

    IPickerCanvas *m_picker = nullptr;
};

} // namespace Widgets
