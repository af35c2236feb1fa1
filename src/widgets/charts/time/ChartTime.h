#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Timestamp.h"

#include <QDateTime>
#include <QString>

namespace Widgets::ChartTime {

/// Times on trends: X values are milliseconds since 1970-01-01 00:00 local time, held as double. A
/// day on which clocks change is as long as it is: X values grow by real time, only their texts
/// jump. Any thread.

constexpr const char *defaultFormat = "hh:mm:ss";

/// What lies between UTC's 1970-01-01 00:00 and the local one, ms. To be added to an X value for
/// milliseconds UTC.
WIDGETS_EXPORT qint64 epoch();

/// Whole milliseconds: what a live value and the archive's sample of the same value have alike.
WIDGETS_EXPORT double toX(Nodes::Timestamp microsecondsUtc);
WIDGETS_EXPORT double fromUtc(quint64 milliseconds);
/// The truncation of an X value, as requests take it; 0 for what lies before 1970 or is no number.
WIDGETS_EXPORT quint64 toUnsigned(double x);
/// Milliseconds UTC of an X value, 0 likewise.
WIDGETS_EXPORT quint64 toUtc(double x);

/// Local time; invalid for what is no time.
WIDGETS_EXPORT QDateTime toDateTime(double x);
/// In Qt's format, where the two characters "\n" become a line break; "" asks for the default.
WIDGETS_EXPORT QString text(double x, const QString &format = QString());

/// The present as an X value, whole milliseconds.
WIDGETS_EXPORT double now();

} // namespace Widgets::ChartTime
