#include "widgets/charts/pickers/CursorLook.h"

#include <QWidget>

#include <qwt_plot.h>
#include <qwt_scale_map.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

namespace Widgets::CursorLook {

namespace {

constexpr int symbolSize = 9; // pixels

} // namespace

QPen linePen(IPickerCanvas::enCursor cursor)
{
    return cursor == IPickerCanvas::FirstCursor ? QPen(Qt::red)
                                                : QPen(QColor(0x12, 0x3e, 0xa8), 1, Qt::DashLine);
}

CursorMarker *makePoint(const QwtPlotItem &item, const QColor &frame, const QPointF &point,
                        const QString &label, IPickerCanvas::enCursor cursor)
{
    auto *marker = new CursorMarker(QStringLiteral("x-marker"), frame);
    const auto *attached = dynamic_cast<const MultiAxisAttached *>(&item);
    const QwtAxisId x = attached ? attached->attachedXAxis() : QwtAxisId(item.xAxis());
    marker->setAxes(x, attached ? attached->attachedYAxis() : QwtAxisId(item.yAxis()));
    marker->setRenderHint(QwtPlotItem::RenderAntialiased);
    QPen pen = linePen(cursor);
    pen.setStyle(Qt::SolidLine);
    marker->setSymbol(
        new QwtSymbol(QwtSymbol::XCross, Qt::NoBrush, pen, QSize(symbolSize, symbolSize)));
    marker->setValue(point);
    marker->setLabel(QwtText(label, QwtText::PlainText));
    const QwtPlot *plot = item.plot();
    const bool isRightHalf =
        plot && plot->canvasMap(packedAxis(x)).transform(point.x()) > plot->canvas()->width() / 2.0;
    marker->setLabelAlignment(isRightHalf ? Qt::AlignLeft : Qt::AlignRight);
    marker->setZ(50);
    return marker;
}

} // namespace Widgets::CursorLook
