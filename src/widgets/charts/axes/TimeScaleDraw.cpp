#include "widgets/charts/axes/TimeScaleDraw.h"

#include "widgets/charts/time/ChartTime.h"

#include <qwt_text.h>

namespace Widgets {

namespace {

constexpr double manyDays = 2 * 86400000.0; // ms; seconds would say nothing then

} // namespace

TimeScaleDraw::TimeScaleDraw(const QColor &color, const std::string &format) : ScaleDraw(color)
{
    TimeScaleDraw::setFormat(format);
}

std::string TimeScaleDraw::formatFor(const std::string &given, double from, double to, double now)
{
    const std::string format = given.empty() ? DefaultFormat : given;
    const QDate first = ChartTime::toDateTime(from).date();
    const QDate today = ChartTime::toDateTime(now).date();
    const bool isToday = first == today && ChartTime::toDateTime(to).date() == today;
    if (isToday || !first.isValid() || format.find_first_of("dMy") != std::string::npos)
        return format;
    const std::string time = to - from < manyDays ? format : "hh:mm";
    return time + (first.year() == today.year() ? "\\ndd.MM" : "\\ndd.MM.yy");
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
