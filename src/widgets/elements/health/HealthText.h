#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/statistics/AlarmMeasure.h"
#include "nodes/values/Timestamp.h"

#include <QPixmap>
#include <QString>

namespace Widgets {

/// Words and signs of the alarm health page. Texts: any thread.
struct WIDGETS_EXPORT HealthText
{
    /// "45 с", "12 мин 30 с", "5 ч 20 мин", "3 сут 4 ч".
    static QString duration(Nodes::Timestamp microseconds);
    static QString time(Nodes::Timestamp at);
    static QString share(double share, int decimals = 1);
    /// "—" where nothing is known.
    static QString value(const Nodes::AlarmMeasure &measure);
    /// "" without one.
    static QString verdict(Nodes::HealthVerdict verdict);
    /// Shape beside the word: circle, triangle, square; GUI thread.
    static QPixmap sign(Nodes::HealthVerdict verdict, int size);
};

} // namespace Widgets
