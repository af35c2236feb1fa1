#include "nodes/alarms/statistics/AlarmMeasure.h"

#include "nodes/alarms/statistics/AlarmFigures.h"

#include <algorithm>

namespace Nodes {

namespace {

using Unit = AlarmMeasure::Unit;

constexpr std::uint64_t fewAlarms = 30; // shares of fewer say nothing

/// Up to `good` as recommended, up to `attention` to be worked at.
HealthVerdict judge(double value, double good, double attention)
{
    return value <= good        ? HealthVerdict::Good
           : value <= attention ? HealthVerdict::Attention
                                : HealthVerdict::Bad;
}

AlarmMeasure count(const char *name, double value, const char *target, HealthVerdict verdict,
                   int decimals = 0)
{
    return {name, value, Unit::Count, decimals, target, verdict, true};
}

AlarmMeasure share(const char *name, double value, const char *target, HealthVerdict verdict,
                   bool isKnown)
{
    return {name, value, Unit::Share, 1, target, isKnown ? verdict : HealthVerdict::None, isKnown};
}

AlarmMeasure seconds(const char *name, const AlarmFigures &figures, Timestamp value)
{
    return {name, double(value) / 1e6, Unit::Seconds,           0,
            "",   HealthVerdict::None, figures.acknowledged > 0};
}

HealthVerdict judgePriorities(const std::vector<double> &shares)
{
    const std::vector<double> &recommended = RecommendedPriorityShares();
    return std::max(judge(shares[2], recommended[2] * 1.5, recommended[2] * 3),
                    judge(shares[1], recommended[1] * 1.5, recommended[1] * 3));
}

void addLoad(const AlarmFigures &figures, std::vector<AlarmMeasure> &measures)
{
    const double bins = double(figures.perBin.size());
    const auto above = double(std::count_if(figures.perBin.begin(), figures.perBin.end(),
                                            [](std::uint32_t raised) { return raised > 10; }));
    measures.push_back(count("Тревог за период", double(figures.raised), "", HealthVerdict::None));
    measures.push_back(count("В среднем за 10 минут", figures.meanPerBin, "не более 1",
                             judge(figures.meanPerBin, 1, 2), 2));
    measures.push_back(count("Наибольшее за 10 минут", double(figures.mostPerBin), "не более 10",
                             judge(double(figures.mostPerBin), 10, 20)));
    measures.push_back(share("Доля отрезков с более чем 10", bins > 0 ? above / bins : 0,
                             "менее 1 %", judge(bins > 0 ? above / bins : 0, 0.01, 0.05),
                             bins > 0));
    measures.push_back(share("Доля времени в лавине тревог", figures.floodShare, "менее 1 %",
                             judge(figures.floodShare, 0.01, 0.05), true));
    measures.push_back(count("Лавин", double(figures.floods), "", HealthVerdict::None));
}

void addNuisance(const AlarmFigures &figures, std::vector<AlarmMeasure> &measures)
{
    const bool isTelling = figures.raised >= fewAlarms && figures.alarms.size() > 10;
    measures.push_back(
        share("Доля десяти самых частых тревог", figures.topTenShare, "не более 5 %",
              isTelling ? judge(figures.topTenShare, 0.05, 0.2) : HealthVerdict::None,
              figures.raised > 0));
    measures.push_back(count("Дребезжащих тревог", double(figures.chatteringAlarms), "нет",
                             judge(double(figures.chatteringAlarms), 0, 2)));
    measures.push_back(count("Мимолётных тревог", double(figures.fleetingAlarms), "нет",
                             judge(double(figures.fleetingAlarms), 0, 5)));
    measures.push_back(count("Стоящих более 24 часов", double(figures.standingAlarms), "менее 5",
                             judge(double(figures.standingAlarms), 4, 10)));
    measures.push_back(
        count("Активных в конце периода", double(figures.activeAtEnd), "", HealthVerdict::None));
}

void addPriorities(const AlarmFigures &figures, std::vector<AlarmMeasure> &measures)
{
    const std::vector<double> shares = PrioritySharesOf(figures);
    const HealthVerdict verdict =
        figures.raised >= fewAlarms ? judgePriorities(shares) : HealthVerdict::None;
    const bool isKnown = figures.raised > 0;
    measures.push_back(share("Высокий приоритет (1)", shares[2], "около 5 %", verdict, isKnown));
    measures.push_back(share("Средний приоритет (2)", shares[1], "около 15 %", verdict, isKnown));
    measures.push_back(
        share("Низкий приоритет (3 и 4)", shares[0], "около 80 %", verdict, isKnown));
}

void addAcknowledgement(const AlarmFigures &figures, std::vector<AlarmMeasure> &measures)
{
    measures.push_back(seconds("Время до квитирования, среднее", figures, figures.acknowledgeMean));
    measures.push_back(
        seconds("Время до квитирования, медиана", figures, figures.acknowledgeMedian));
    measures.push_back(
        seconds("Время до квитирования, 95 % не дольше", figures, figures.acknowledgeMost));
    measures.push_back(
        count("Не квитировано", double(figures.unacknowledged), "", HealthVerdict::None));
}

} // namespace

bool IsTelling(const AlarmFigures &figures)
{
    constexpr Timestamp least = Timestamp(3600) * 1000000;
    return figures.end - figures.begin >= least;
}

std::vector<AlarmMeasure> MeasuresOf(const AlarmFigures &figures)
{
    std::vector<AlarmMeasure> measures;
    addLoad(figures, measures);
    addNuisance(figures, measures);
    addPriorities(figures, measures);
    addAcknowledgement(figures, measures);
    for (AlarmMeasure &measure : measures) {
        if (measure.verdict == HealthVerdict::Good && !IsTelling(figures))
            measure.verdict = HealthVerdict::None; // what is bad after minutes is bad
    }
    return measures;
}

std::vector<double> PrioritySharesOf(const AlarmFigures &figures)
{
    const auto &of = figures.perPriority;
    const double all = double(of[0] + of[1] + of[2] + of[3]);
    if (all <= 0)
        return {0, 0, 0};
    return {double(of[2] + of[3]) / all, double(of[1]) / all, double(of[0]) / all};
}

const std::vector<double> &RecommendedPriorityShares()
{
    static const std::vector<double> shares{0.80, 0.15, 0.05};
    return shares;
}

HealthVerdict OverallOf(const std::vector<AlarmMeasure> &measures)
{
    HealthVerdict overall = HealthVerdict::None;
    for (const AlarmMeasure &measure : measures)
        overall = std::max(overall, measure.verdict);
    return overall;
}

} // namespace Nodes
