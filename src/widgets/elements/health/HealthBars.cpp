#include "widgets/elements/health/HealthBars.h"

#include "widgets/elements/health/HealthText.h"

#include "nodes/alarms/statistics/AlarmAreas.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr std::size_t topTen = 10;

QString countAndShare(std::uint64_t raised, const Nodes::AlarmFigures &figures)
{
    return QStringLiteral("%1 (%2)").arg(raised).arg(
        HealthText::share(figures.raised > 0 ? double(raised) / double(figures.raised) : 0));
}

} // namespace

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
    std::vector<BarsChart::Bar> bars;
    const std::uint64_t most = figures.alarms.empty() ? 0 : figures.alarms.front().raised;
    for (const Nodes::AlarmCount &alarm : figures.alarms) {
        if (bars.size() == topTen || alarm.raised == 0)
            break;
        QString figure = countAndShare(alarm.raised, figures);
        if (alarm.chattering > 0)
            figure.prepend(QStringLiteral("дребезг · "));
        bars.push_back({QString::fromStdString(alarm.text), figure,
                        double(alarm.raised) / double(most), -1, alarm.chattering > 0});
    }
    return bars;
}

std::vector<BarsChart::Bar> AreaBars(const Nodes::AlarmFigures &figures)
{
    std::vector<BarsChart::Bar> bars;
    const std::vector<Nodes::AlarmArea> areas = Nodes::AlarmAreasOf(figures);
    for (const Nodes::AlarmArea &area : areas) {
        if (bars.size() == topTen || area.raised == 0)
            break;
        QString figure = countAndShare(area.raised, figures);
        if (area.chattering > 0)
            figure.prepend(QStringLiteral("дребезг: %1 · ").arg(area.chattering));
        const QString name =
            area.name.empty() ? QStringLiteral("Вне папок") : QString::fromStdString(area.name);
        bars.push_back({name, figure, double(area.raised) / double(areas.front().raised), -1,
                        area.chattering > 0});
    }
    return bars;
}

std::vector<BarsChart::Bar> ShiftBars(const Nodes::AlarmFigures &figures)
{
    std::vector<Nodes::AlarmShift> sums; // begin and end: 0 and the duration of all
    for (const Nodes::AlarmShift &shift : figures.shifts) {
        auto sum = std::find_if(sums.begin(), sums.end(), [&](const Nodes::AlarmShift &other) {
            return other.name == shift.name;
        });
        if (sum == sums.end())
            sum = sums.insert(sum, {0, 0, shift.name, 0});
        sum->end += shift.end - shift.begin;
        sum->raised += shift.raised;
    }
    std::uint64_t most = 1;
    for (const Nodes::AlarmShift &sum : sums)
        most = std::max(most, sum.raised);
    std::vector<BarsChart::Bar> bars;
    for (const Nodes::AlarmShift &sum : sums) {
        const double mean = double(sum.raised) * double(Nodes::AlarmFigures::Bin) / double(sum.end);
        const QString name =
            sum.name.empty() ? QStringLiteral("Без названия") : QString::fromStdString(sum.name);
        bars.push_back({name,
                        QStringLiteral("%1 · %2 за 10 мин")
                            .arg(countAndShare(sum.raised, figures))
                            .arg(mean, 0, 'f', 2),
                        double(sum.raised) / double(most), -1, false});
    }
    return bars;
}

} // namespace Widgets
