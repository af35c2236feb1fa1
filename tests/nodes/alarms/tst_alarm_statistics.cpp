#include "nodes/CoreFixture.h"
#include "nodes/alarms/statistics/AlarmAreas.h"
#include "nodes/alarms/statistics/AlarmMeasure.h"
#include "nodes/alarms/statistics/AlarmStatisticsReading.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/journal/JournalReader.h"
#include "support/Rows.h"

#include <QRegularExpression>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

using namespace Nodes;

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp begin = 1700000000 * second;
constexpr Timestamp tenMinutes = AlarmFigures::Bin;

unsigned long occurrenceOf(Timestamp at)
{
    return static_cast<unsigned long>(at / 1000);
}

BasicEvent entryOf(unsigned long node, EventType type, AlarmState state, Timestamp at,
                   unsigned long occurrence)
{
    BasicEvent entry;
    entry.time = at;
    entry.type = type;
    entry.alarmState = state;
    entry.priority = int(node % 4) + 1;
    entry.occurrence = occurrence;
    entry.source = "Котёл/" + std::to_string(node);
    entry.sourceNode = NodeLink(node);
    return entry;
}

/// Entries from "+1@0 -1@9.5 !1@3": alarm 1 is raised, returns, is acknowledged at that second of
/// the period; h hides it, u shows it again as up, n as normal. "#3" names an occurrence in place
/// of the latest one.
std::vector<BasicEvent> entriesOf(const QString &script)
{
    static const QRegularExpression form("([-+!hun])(\\d+)(?:#(\\d+))?@(-?[\\d.]+)");
    std::map<unsigned long, unsigned long> latest;
    std::vector<BasicEvent> entries;
    for (const QString &word : script.split(' ', Qt::SkipEmptyParts)) {
        const auto match = form.match(word);
        const unsigned long node = match.captured(2).toULong();
        const Timestamp at = begin + std::llround(match.captured(4).toDouble() * 1e6);
        const char sign = match.captured(1)[0].toLatin1();
        unsigned long &occurrence = latest[node];
        if (!match.captured(3).isEmpty())
            occurrence = match.captured(3).toULong();
        else if (sign == '+' || occurrence == 0)
            occurrence = occurrenceOf(at);
        const auto add = [&](EventType type, AlarmState state) {
            entries.push_back(entryOf(node, type, state, at, occurrence));
        };
        switch (sign) {
        case '+':
            add(TypeAlarmActive, AlarmState::ActiveUnacked);
            break;
        case '-':
            add(TypeAlarmReturned, AlarmState::ReturnedUnacked);
            break;
        case '!':
            add(TypeAcknowledgement, AlarmState::ActiveAcked);
            break;
        case 'h':
            add(TypeAlarmState, AlarmState::Shelved);
            break;
        case 'u':
            add(TypeAlarmState, AlarmState::ActiveUnacked);
            break;
        case 'n':
            add(TypeAlarmState, AlarmState::Normal);
            break;
        }
    }
    return entries;
}

AlarmFigures figuresOf(const std::vector<BasicEvent> &entries, Timestamp span)
{
    AlarmStatistics statistics({begin, begin + span, begin - AlarmStatistics::Day});
    for (const BasicEvent &entry : entries)
        statistics.Add(entry);
    return statistics.GetFigures();
}

/// Raisings of so many different alarms, one each `step` seconds from `from` on.
QString burst(int count, double from, double step)
{
    QString script;
    for (int i = 0; i < count; ++i)
        script += QString("+%1@%2 ").arg(i + 1).arg(from + i * step, 0, 'f', 6);
    return script;
}

double figure(const AlarmFigures &f, const QString &name)
{
    const std::map<QString, double> all{{"raised", f.raised},
                                        {"mostPerBin", f.mostPerBin},
                                        {"floods", f.floods},
                                        {"flood", double(f.flood) / second},
                                        {"longest", double(f.longestFlood) / second},
                                        {"chattering", f.chatteringAlarms},
                                        {"fleeting", f.fleetingAlarms},
                                        {"standing", f.standingAlarms},
                                        {"active", f.activeAtEnd},
                                        {"acknowledged", f.acknowledged},
                                        {"unacknowledged", f.unacknowledged},
                                        {"mean", double(f.acknowledgeMean) / second},
                                        {"perBin", f.meanPerBin},
                                        {"topTen", f.topTenShare},
                                        {"alarms", f.alarms.size()}};
    return all.at(name);
}

/// The same by comparing everything with everything.
struct Naive
{
    explicit Naive(const std::vector<BasicEvent> &entries, Timestamp span)
    {
        std::map<unsigned long, std::vector<Timestamp>> perAlarm;
        for (const BasicEvent &entry : entries) {
            if (entry.type != TypeAlarmActive)
                continue;
            raised.push_back(entry.time);
            perAlarm[entry.sourceNode.GetNodeId()].push_back(entry.time);
            for (const BasicEvent &later : entries) {
                const bool isSame =
                    later.occurrence == entry.occurrence && later.sourceNode == entry.sourceNode;
                if (isSame && later.type == TypeAcknowledgement)
                    latencies.push_back(later.time - entry.time);
            }
        }
        for (const auto &[node, times] : perAlarm) {
            bool is = false;
            for (std::size_t i = 2; i < times.size(); ++i)
                is |= times[i] - times[i - 2] < 60 * second;
            chattering += is ? 1 : 0;
        }
        std::sort(latencies.begin(), latencies.end());
        measureFlood(span);
    }
    void measureFlood(Timestamp span)
    {
        std::vector<Timestamp> instants = raised;
        for (const Timestamp at : raised)
            instants.push_back(at + tenMinutes);
        instants.push_back(begin + span);
        std::sort(instants.begin(), instants.end());
        Timestamp since = 0;
        for (const Timestamp now : instants) {
            if (now > begin + span)
                break;
            const auto within = std::count_if(raised.begin(), raised.end(), [&](Timestamp at) {
                return at <= now && at > now - tenMinutes;
            });
            const bool isOver = within < 5 || now == begin + span;
            if (since == 0 && within > 10 && now < begin + span)
                since = now;
            else if (since != 0 && isOver) {
                flood += now - since;
                since = 0;
            }
        }
    }

    std::vector<Timestamp> raised;
    std::vector<Timestamp> latencies;
    std::size_t chattering = 0;
    Timestamp flood = 0;
};

std::vector<BasicEvent> randomEntries(unsigned seed, Timestamp span)
{
    std::mt19937 random(seed);
    std::map<unsigned long, unsigned long> up; // by node
    std::vector<BasicEvent> entries;
    Timestamp at = begin;
    while (true) {
        // Calm and busy hours by turns.
        const bool isBusy = (at - begin) / (3 * tenMinutes) % 2 == 1;
        at += Timestamp(random() % ((isBusy ? 40 : 600) * second)) + 1000;
        if (at >= begin + span)
            return entries;
        const unsigned long node = random() % 8 + 1;
        unsigned long &occurrence = up[node];
        if (occurrence == 0) {
            occurrence = occurrenceOf(at);
            entries.push_back(
                entryOf(node, TypeAlarmActive, AlarmState::ActiveUnacked, at, occurrence));
            continue;
        }
        if (random() % 2)
            entries.push_back(
                entryOf(node, TypeAcknowledgement, AlarmState::ActiveAcked, at, occurrence));
        at += Timestamp(random() % (20 * second)) + 1000;
        if (at >= begin + span)
            return entries;
        entries.push_back(entryOf(node, TypeAlarmReturned, AlarmState::Normal, at, occurrence));
        occurrence = 0;
    }
}

} // namespace

class TestAlarmStatistics : public QObject
{
    Q_OBJECT

private slots:
    void definitions_data()
    {
        const Rows<QString, double, QString, double> row("entries", "hours", "figure", "expected");
        row("eleven in less than ten minutes", burst(11, 0, 59.9), 2, "floods", 1);
        row("eleven in ten minutes", burst(11, 0, 60), 2, "floods", 0);
        row("ten at once", burst(10, 0, 0), 2, "floods", 0);
        // The fifth newest of 11 came at 36 s.
        row("ends below five", burst(11, 0, 6), 2, "flood", 600 + 36 - 60);
        row("goes on to the end", burst(11, 3540, 1), 1, "flood", 50);
        row("began before the period", burst(11, -60, 1), 2, "flood", 600 - 60 + 6);
        row("began before is not counted", burst(11, -60, 1), 2, "floods", 0);
        row("before the period is not raised", "+1@-1 +2@0", 1, "raised", 1);
        row("at the end is not raised", "+1@3600", 1, "raised", 0);
        row("ten minutes are apart", "+1@599.9 +2@600 +3@1199", 1, "mostPerBin", 2);
        row("mean of a part", "+1@0 +2@60", 0.5, "perBin", 2.0 / 3);
        row("three in less than a minute", "+1@0 -1@1 +1@30 -1@31 +1@59.9", 1, "chattering", 1);
        row("three in a minute", "+1@0 -1@1 +1@30 -1@31 +1@60", 1, "chattering", 0);
        row("three different ones", "+1@0 +2@1 +3@2", 1, "chattering", 0);
        row("gone after less than ten seconds", "+1@0 -1@9.9", 1, "fleeting", 1);
        row("gone after ten seconds", "+1@0 -1@10", 1, "fleeting", 0);
        row("acknowledged in time", "+1@0 !1@3 -1@9", 1, "fleeting", 0);
        row("stands beyond a day", "+1@0", 24.001, "standing", 1);
        row("stands a day", "+1@0", 24, "standing", 0);
        row("stood beyond a day", "+1@0 -1@86401", 48, "standing", 1);
        row("stood since before the period", "+1@-43200 -1@43201", 48, "standing", 1);
        row("raised before anything was read", "-1#1699900000000@5", 48, "standing", 1);
        row("hidden does not stand", "+1@0 h1@60", 48, "standing", 0);
        row("back from the shelf is the same", "+1@0 h1@60 u1@120", 1, "raised", 1);
        row("raised on the shelf", "h1@0 u1#1700000060000@120", 1, "raised", 1);
        row("gone on the shelf", "+1@0 h1@60 n1@120", 48, "active", 0);
        row("raised anew without a return", "+1@0 +1@90000", 48, "active", 1);
        row("a former one does not stand", "+1@0 +1@90000", 48, "standing", 0);
        row("clock set back: returned before it came", "-1#9@5 +1#9@10", 48, "active", 0);
        row("clock set back: older one later", "+1#9@5 +1#8@10 -1#9@20", 48, "active", 0);
        row("clock set back: both were raised", "+1#9@5 +1#8@10", 1, "raised", 2);
        row("acknowledged once", "+1@0 +2@1 !1@30 !1@60 !2@91", 1, "mean", 60);
        row("a former one acknowledged", "+1#5@0 +1#6@30 !1#5@40", 1, "acknowledged", 0);
        row("never acknowledged and waiting", "+1@0 -1@1 +1@10 +2@0 !2@4", 1, "unacknowledged", 2);
        row("all by ten", burst(9, 0, 1) + "+1@100 -1@110", 1, "topTen", 1);
        row("the ten most frequent", burst(12, 0, 1), 1, "topTen", 10.0 / 12);
        row("nothing", "", 1, "raised", 0);
    }
    void definitions()
    {
        QFETCH(QString, entries);
        QFETCH(double, hours);
        QFETCH(QString, figure);
        QFETCH(double, expected);
        const AlarmFigures figures =
            figuresOf(entriesOf(entries), std::llround(hours * 3600) * second);
        QCOMPARE(::figure(figures, figure), expected);
    }

    void floodsAsTheStationSetsThem_data()
    {
        const Rows<int, int, int, qint64> row("above", "below", "floods", "seconds");
        row("one less than it takes", 4, 2, 0, 0);
        row("one more", 3, 2, 1, 600 + 30 - 40);
        row("ends later", 3, 1, 1, 600 + 40 - 40);
        row("ends with as many as begin it", 2, 9, 1, 600 + 30 - 30);
        row("two at least", 0, 0, 1, 600 + 40 - 20);
    }
    void floodsAsTheStationSetsThem()
    {
        QFETCH(int, above);
        QFETCH(int, below);
        AlarmStatistics statistics({begin, begin + 4 * tenMinutes, 0, tenMinutes, tenMinutes,
                                    FloodMeter::Limits{above, below}});
        for (const BasicEvent &entry : entriesOf("+1@10 +2@20 +3@30 +4@40"))
            statistics.Add(entry);
        const AlarmFigures figures = statistics.GetFigures();
        QTEST(int(figures.floods), "floods");
        QTEST(qint64(figures.flood / second), "seconds");
        QCOMPARE(figures.floodAbove, above);
    }

    void shiftsCountTheirOwn()
    {
        AlarmStatistics::Settings settings{begin, begin + 1000 * second};
        settings.from = begin - 1000 * second;
        settings.shifts = {{begin - 500 * second, begin + 100 * second, "A"},
                           {begin + 100 * second, begin + 200 * second, "B"},
                           {begin + 300 * second, begin + 9000 * second, "A"},
                           {begin + 9000 * second, begin + 9900 * second, "B"}};
        AlarmStatistics statistics(settings);
        for (const BasicEvent &entry :
             entriesOf("+1@-1 +2@0 +3@99.9 +4@100 +5@199 +6@250 +7@300 +8@999 +9@1001"))
            statistics.Add(entry);
        const std::vector<AlarmShift> shifts = statistics.GetFigures().shifts;
        QCOMPARE(shifts.size(), std::size_t(3)); // the last one is no part of the period
        QCOMPARE(shifts[0].begin, begin);
        QCOMPARE(shifts[2].end, begin + 1000 * second);
        for (const AlarmShift &shift : shifts)
            QCOMPARE(shift.raised, std::uint64_t(2));
    }

    void areasAreAboveTheSignals_data()
    {
        const Rows<QStringList, QStringList> row("sources", "areas");
        row("two", {"П/К1/T/H", "П/К2/T/H", "П/К2/P/L"}, {"П/К2 2", "П/К1 1"});
        row("equal ones by name", {"П/Б/T/H", "П/А/T/H"}, {"П/А 1", "П/Б 1"});
        row("one alarm of several signals' depth", {"П/К1/Насос/T/H", "П/К1/T/H"},
            {"П/К1 1", "П/К1/Насос 1"});
        row("in none", {"T/H", "", "H"}, {" 3"});
        row("no alarms", {}, {});
    }
    void areasAreAboveTheSignals()
    {
        QFETCH(QStringList, sources);
        AlarmFigures figures;
        for (const QString &source : qAsConst(sources)) {
            figures.alarms.emplace_back();
            figures.alarms.back().source = source.toStdString();
            figures.alarms.back().raised = 1;
        }
        QStringList areas;
        for (const AlarmArea &area : AlarmAreasOf(figures))
            areas << QString("%1 %2").arg(QString::fromStdString(area.name)).arg(area.raised);
        QTEST(areas, "areas");
    }

    void agreesWithNaive()
    {
        for (unsigned seed = 1; seed <= 20; ++seed) {
            const Timestamp span = 40 * tenMinutes;
            const std::vector<BasicEvent> entries = randomEntries(seed, span);
            const AlarmFigures figures = figuresOf(entries, span);
            const Naive naive(entries, span);
            QVERIFY(naive.raised.size() > 50);
            QCOMPARE(figures.raised, std::uint64_t(naive.raised.size()));
            QCOMPARE(figures.flood, naive.flood);
            QCOMPARE(figures.chatteringAlarms, naive.chattering);
            QCOMPARE(figures.acknowledged, std::uint64_t(naive.latencies.size()));
            const auto rank = std::size_t(std::ceil(0.95 * double(naive.latencies.size()))) - 1;
            const double exact = double(naive.latencies[rank]);
            QVERIFY(std::abs(double(figures.acknowledgeMost) - exact) <= exact / 100);
            for (std::size_t i = 0; i < figures.perBin.size(); ++i) {
                const Timestamp from = begin + Timestamp(i) * tenMinutes;
                QCOMPARE(std::ptrdiff_t(figures.perBin[i]),
                         std::count_if(naive.raised.begin(), naive.raised.end(), [&](Timestamp at) {
                             return at >= from && at < from + tenMinutes;
                         }));
            }
        }
    }

    void entriesOfOthersAreToldOf()
    {
        std::vector<BasicEvent> entries = entriesOf("+1@0 +2@1");
        entries[0].sourceNode = NodeLink();
        BasicEvent message;
        message.time = begin + 2 * second;
        message.sourceNode = NodeLink(1);
        entries.push_back(message);
        const AlarmFigures figures = figuresOf(entries, tenMinutes);
        QCOMPARE(figures.foreign, std::uint64_t(1));
        QCOMPARE(figures.raised, std::uint64_t(1));
    }

    void upSinceLongBeforeIsSeeded()
    {
        AlarmStatistics statistics({begin, begin + tenMinutes});
        BasicEvent up = entriesOf("+1@-900000").front();
        up.raised = up.time;
        statistics.Seed(up);
        up = entriesOf("+2@5").front(); // its entry is read
        up.raised = up.time;
        statistics.Seed(up);
        statistics.Add(up);
        const AlarmFigures figures = statistics.GetFigures();
        QCOMPARE(figures.standingAlarms, std::size_t(1));
        QCOMPARE(figures.raised, std::uint64_t(1));
        QCOMPARE(figures.activeAtEnd, std::size_t(2));
    }

    void verdicts_data()
    {
        const Rows<QString, QString, int, int> row("entries", "measure", "verdict", "bins");
        row("calm", "+1@0", "В среднем за 10 минут", int(HealthVerdict::Good), 6);
        row("too short to be good", "+1@0", "В среднем за 10 минут", int(HealthVerdict::None), 5);
        row("bad all the same", burst(25, 0, 1), "Наибольшее за 10 минут", int(HealthVerdict::Bad),
            1);
        row("busy", burst(9, 0, 60), "В среднем за 10 минут", int(HealthVerdict::Attention), 6);
        row("overload", burst(13, 0, 60), "В среднем за 10 минут", int(HealthVerdict::Bad), 6);
        row("flood", burst(11, 0, 1), "Доля времени в лавине тревог", int(HealthVerdict::Bad), 6);
        row("few tell nothing", burst(12, 0, 1), "Высокий приоритет (1)", int(HealthVerdict::None),
            6);
        row("too many high", burst(40, 0, 1), "Высокий приоритет (1)", int(HealthVerdict::Bad), 6);
    }
    void verdicts()
    {
        QFETCH(QString, entries);
        QFETCH(QString, measure);
        QFETCH(int, verdict);
        QFETCH(int, bins);
        const auto measures = MeasuresOf(figuresOf(entriesOf(entries), bins * tenMinutes));
        const auto found =
            std::find_if(measures.begin(), measures.end(),
                         [&](const AlarmMeasure &m) { return m.name == measure.toStdString(); });
        QVERIFY(found != measures.end());
        QCOMPARE(int(found->verdict), verdict);
    }

    void readsTheJournal()
    {
        QTemporaryDir directory;
        CoreFixture fixture(directory);
        ConfigNode *alarm = fixture.add("alarmQuality", fixture.root(), "Тревога");
        QVERIFY(fixture.core.Start());
        const unsigned long node = alarm->GetId();
        for (int i = 0; i < 12000; ++i) { // more than a page
            const Timestamp at = begin + i * second;
            BasicEvent entry =
                entryOf(node, TypeAlarmActive, AlarmState::ActiveUnacked, at, occurrenceOf(at));
            entry.sourceNode = alarm->GetNodeLink();
            QVERIFY(fixture.core.GetJournal().Append(entry));
        }
        QVERIFY(fixture.core.GetJournal().Flush());
        auto reader = fixture.core.GetJournal().OpenReader();
        AlarmStatisticsReading reading;
        reading.begin = begin - 20 * tenMinutes;
        reading.end = begin + 20 * tenMinutes;
        AlarmFigures figures;
        std::atomic<bool> isCancelled{false};
        QVERIFY(reading.Read(*reader, isCancelled, figures));
        QCOMPARE(figures.raised, std::uint64_t(12000));
        QCOMPARE(figures.begin, begin); // the journal knows of nothing before

        int told = 0;
        reading.onProgress = [&](double) { isCancelled = ++told == 2; };
        QCOMPARE(reading.Read(*reader, isCancelled, figures), Result::Cancelled);
        QCOMPARE(told, 2);
        reading.end = reading.begin;
        QCOMPARE(reading.Read(*reader, isCancelled, figures), Result::InvalidArgument);
        reader.reset();
        QVERIFY(fixture.core.Stop());
    }
};

QTEST_GUILESS_MAIN(TestAlarmStatistics)
#include "tst_alarm_statistics.moc"
