#include "widgets/elements/health/HealthBars.h"

#include "widgets/elements/health/HealthText.h"

namespace Widgets {

std::vector<BarsChart::Bar> PriorityBars(const Nodes::AlarmFigures &figures)
{
    const QString names[] = {QStringLiteral("Низкий (3 и 4)"), QStringLiteral("Средний (2)"),
                             QStringLiteral("Высокий (1)")};
    const std::vector<double> shares = Nodes::PrioritySharesOf(figures);
    const std::vector<double> &targets = Nodes::RecommendedPriorityShares();
    std::vector<BarsChart::Bar> bars;
    for (std::size_t i = 0; i < shares.size() && figures.raised > 0; ++i)
        bars.push_back({names[i], HealthText::share(shares[i]), shares[i], targets[i], false});
    return bars;
}

std::vector<BarsChart::Bar> TopTenBars(const Nodes::AlarmFigures &figures)
{
    constexpr std::size_t topTen = 10;
    std::vector<BarsChart::Bar> bars;
    const std::uint64_t most = figures.alarms.empty() ? 0 : figures.alarms.front().raised;
    for (const Nodes::AlarmCount &alarm : figures.alarms) {
        if (bars.size() == topTen || alarm.raised == 0)
            break;
        QString figure = QStringLiteral("%1 (%2)")
                             .arg(alarm.raised)
                             .arg(HealthText::share(double(alarm.raised) / double(figures.raised)));
        if (alarm.chattering > 0)
            figure.prepend(QStringLiteral("дребезг · "));
        bars.push_back({QString::fromStdString(alarm.text), figure,
                        double(alarm.raised) / double(most), -1, alarm.chattering > 0});
    }
    return bars;
}

} // namespace Widgets
