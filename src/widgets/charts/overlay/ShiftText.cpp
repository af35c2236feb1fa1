#include "widgets/charts/overlay/ShiftText.h"

#include "nodes/charts/widgetChartHistorySerie.h"

#include <QStringList>

#include <cmath>

namespace Widgets {

QString ShiftText(double milliseconds)
{
    struct Unit
    {
        qint64 seconds;
        const char *name;
    };
    static constexpr Unit units[] = {{86400, "сут"}, {3600, "ч"}, {60, "мин"}, {1, "с"}};
    auto left = qint64(std::llround(milliseconds / 1000));
    QStringList parts;
    for (const Unit &unit : units) {
        if (left >= unit.seconds)
            parts << QStringLiteral("%1 %2")
                         .arg(left / unit.seconds)
                         .arg(QString::fromUtf8(unit.name));
        left %= unit.seconds;
    }
    return QStringLiteral("−") + (parts.isEmpty() ? QStringLiteral("0 с") : parts.join(' '));
}

double ShiftOf(const Nodes::widgetChartBasicSerie *node)
{
    const auto *line = dynamic_cast<const Nodes::widgetChartHistorySerie *>(node);
    return line ? line->GetShift() : 0;
}

} // namespace Widgets
