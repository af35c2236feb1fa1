#include "widgets/charts/pickers/CursorRelay.h"

#include <qwt_plot.h>

namespace Widgets {

CursorRelay::CursorRelay(QwtPlot &plot) : QObject(&plot) {}

CursorRelay &CursorRelay::of(QwtPlot &plot)
{
    auto *relay = plot.findChild<CursorRelay *>(QString(), Qt::FindDirectChildrenOnly);
    return relay ? *relay : *new CursorRelay(plot);
}

void CursorRelay::setPicker(IPickerCanvas *picker)
{
    m_picker = picker;
    emit changed();
}

} // namespace Widgets
