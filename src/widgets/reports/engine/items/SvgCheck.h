#pragma once

#include "widgets/WidgetsExport.h"

#include <QByteArray>
#include <QString>

namespace LimeReport {

/// Why a drawing isn't painted; "" for one that may be. Refused are what is no SVG, what names
/// other files, what declares entities, and what could grow without bound (large, deep, references
/// in references). Any thread.
WIDGETS_EXPORT QString svgFault(const QByteArray &svg);

} // namespace LimeReport
