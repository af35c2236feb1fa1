#pragma once

#include "widgets/reports/engine/items/ChartData.h"

class QPainter;
class QRectF;

namespace LimeReport {

/// A pie of a chart's first series with its shares beside it. Units are 0.1 mm.
namespace PieDrawing {

/// Why no pie can show the values; none when one can. A missing share would make the others lie.
ItemFault faultOf(const ChartData &data);
void draw(QPainter &painter, const QRectF &rect, const ChartData &data);

} // namespace PieDrawing

} // namespace LimeReport
