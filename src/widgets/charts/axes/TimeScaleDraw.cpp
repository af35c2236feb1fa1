#include "widgets/charts/axes/TimeScaleDraw.h"

#include "widgets/charts/time/ChartTime.h"

#include <qwt_text.h>

namespace Widgets {

TimeScaleDraw::TimeScaleDraw(const QColor &color, const std::string &format) : ScaleDraw(color)
{
    TimeScaleDraw::setFormat(format);
}

void TimeScaleDraw::setFormat(const std::string &format)
{
    m_format = QString::fromStdString(format.empty() ? DefaultFormat : format);
    invalidateCache();
}

QwtText TimeScaleDraw::label(double value) const
{
    return colored(ChartTime::text(value, m_format));
}

} // namespace Widgets
