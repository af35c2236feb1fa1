#pragma once

#include "widgets/WidgetsExport.h"

class QPainter;
class QRectF;
class QString;

namespace LimeReport {

/// What stands where something could not be printed: a marked frame with the reason, so that a gap
/// is never taken for "nothing to tell". `unit`: painter's units a millimetre. Any thread.
WIDGETS_EXPORT void drawPlaceholder(QPainter &painter, const QRectF &rect, double unit,
                                    const QString &text);

} // namespace LimeReport
