#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/archive/FetchValueResponse.h"
#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistoryInquiry.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/archive/SessionHistory.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QFile>
#include <QtTest>

#include <cmath>
#include <future>
#include <random>

using namespace Nodes;

namespace {

using Answer = std::shared_ptr<const HistoryAnswer>;

/// "time:number", an aggregate as "begin-end:first/minimum/maximum/last*count"; worst quality
/// added.
QString textOf(const HistoryColumn &column)
{
    const auto mark = [](Quality quality) {
        return quality == Quality::Good ? QString() : QString(QualityToken(quality)).left(1);
    };
    QStringList texts;
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        QString text = QString("%1:%2").arg(column.times[i]).arg(column.numbers[i]);
        if (!column.intervals.empty()) {
            const IntervalSample &s = column.intervals[i];
            text = QString("%1-%2:%3/%4/%5/%6*%7").arg(s.begin).arg(s.end);
            text = text.arg(s.first).arg(s.minimum).arg(s.maximum).arg(s.last).arg(s.count);
        }
        texts << text + mark(column.qualities[i]);
    }
    return texts.join(' ');
}

/// Whether the system was asked for large pages at that address.
bool hasLargePages(const void *address)
{
    QFile maps("/proc/self/smaps");
    if (!maps.open(QIODevice::ReadOnly))
        return false;
    const auto wanted = reinterpret_cast<quintptr>(address);
    bool isWithin = false;
    for (const QByteArray &line : maps.readAll().split('\n')) {
        const QList<QByteArray> bounds = line.left(line.indexOf(' ')).split('-');
        if (bounds.size() == 2)
            isWithin = wanted >= bounds[0].toULongLong(nullptr, 16) &&
                       wanted < bounds[1].toULongLong(nullptr, 16);
        else if (isWithin && line.startsWith("VmFlags:"))
            return line.contains(" hg");
    }
    return false;
}

struct Sample
{
    Timestamp time;
    double number;
    Quality quality;
};
using Samples = std::vector<Sample>;

IntervalSample intervalOf(const Samples &samples, Timestamp begin, Timestamp end)
{
    IntervalSample made{begin, end, qQNaN(), qQNaN(), qQNaN(), qQNaN(), samples.size()};
    const auto number = [](const Sample &s) {
        const bool isGap = s.quality == Quality::Bad || s.quality == Quality::Stale;
        return isGap ? qQNaN() : s.number;
    };
    made.first = number(samples.front());
    made.last = number(samples.back());
    std::vector<double> valid;
    for (const Sample &sample : samples) {
        if (!std::isnan(number(sample)))
            valid.push_back(number(sample));
    }
    if (!valid.empty()) {
        made.minimum = *std::min_element(valid.begin(), valid.end());
        made.maximum = *std::max_element(valid.begin(), valid.end());
    }
    for (const Quality quality : {Quality::Uncertain, Quality::Stale, Quality::Bad}) {
        if (std::any_of(samples.begin(), samples.end(),
                        [&](const Sample &s) { return s.quality == quality; }))
            made.worst = quality;
    }
    return made;
}

HistoryColumn described(const Samples &samples, Timestamp from, Timestamp to, std::size_t maxPoints)
{
    std::map<Timestamp, Samples> cells; // by begin
    Samples before, after;
    std::size_t within = 0;
    for (const Sample &s : samples)
        within += s.time >= from && s.time <= to;
    Timestamp width = 1;
    while (within > maxPoints && std::size_t(to / width - from / width) + 1 > maxPoints)
        width *= 2;
    for (const Sample &s : samples) {
        if (s.time < from)
            before = {s};
        else if (s.time <= to)
            cells[std::max(from, s.time / width * width)].push_back(s);
        else if (after.empty())
            after = {s};
    }
    HistoryColumn column;
    const auto add = [&](const Samples &of, Timestamp begin, Timestamp end) {
        const IntervalSample made = intervalOf(of, begin, end);
        column.times.push_back(begin);
        column.numbers.push_back(made.last);
        column.qualities.push_back(made.worst);
        if (within > maxPoints)
            column.intervals.push_back(made);
    };
    for (const Sample &s : before)
        add(before, s.time, s.time + 1);
    for (const auto &[begin, of] : cells)
        add(of, begin, std::min(to + 1, begin / width * width + width));
    for (const Sample &s : after)
        add(after, s.time, s.time + 1);
    return column;
}

/// Answers when it is let; counts how often it was asked.
class Gate : public HistorySource
{
public:
    Result Read(HistoryColumnBuilder &into, const std::atomic<bool> &isCancelled) const override
    {
        ++asked;
        while (!isOpen && !isCancelled)
            std::this_thread::yield();
        into.Add(into.GetFrom(), 1, Quality::Good);
        return isCancelled ? Result(Result::Cancelled) : Result();
    }
    mutable std::atomic<int> asked{0};
    std::atomic<bool> isOpen{false};
};

/// Two signals with histories that answer when they are let, and one without.
struct Service : ProjectFixture
{
    Service()
    {
        for (int i = 0; i < 3; ++i)
            tags.push_back(add<BasicSignal>("memorySignal", root()));
        for (std::size_t i = 0; i < 2; ++i) {
            if (!service.AddSource(tags[i]->GetId(), gates[i]))
                throw std::logic_error("not added");
        }
    }
    HistoryRequest request(std::initializer_list<int> which) const
    {
        HistoryRequest made;
        made.from = 1;
        made.to = 2;
        for (const int i : which)
            made.nodes.push_back(i < 0 ? NodeLink(4711) : tags[std::size_t(i)]->GetNodeLink());
        return made;
    }

    std::array<std::shared_ptr<Gate>, 2> gates{std::make_shared<Gate>(), std::make_shared<Gate>()};
    HistoryService service;
    std::vector<BasicSignal *> tags;
};

} // namespace

class TestHistory : public QObject
{
    Q_OBJECT

private slots:
    void largePages_data()
    {
        const Rows<int, int, bool> row("samples", "maxPoints", "expected");
        row("a long answer", 2000000, 0, true);
        row("one that is cut to a screen's width", 2000000, 2000, false);
    }

    // Half of the time of a long answer would go into faults of small pages.
    void largePages()
    {
        if (!QFile::exists("/sys/kernel/mm/transparent_hugepage/enabled"))
            QSKIP("this system has no large pages");
        QFETCH(int, samples);
        QFETCH(int, maxPoints);
        HistoryColumnBuilder builder(0, samples, std::size_t(maxPoints));
        builder.Reserve(std::size_t(samples));
        for (int i = 0; i < samples; ++i)
            builder.Add(i, i, Quality::Good);
        const HistoryColumn column = builder.Take();
        QCOMPARE(column.numbers.back(), samples - 1.0);
        QTEST(hasLargePages(&column.times[column.times.size() / 2]), "expected");
    }

    void column_data()
    {
        // samples: time:number and the first letter of a quality; span 100 to 199
        const Rows<QString, int, QString> row("samples", "maxPoints", "column");
        row("nothing", "", 4, "");
        row("fits", "100:1 150:2 199:3", 3, "100:1 150:2 199:3");
        row("all wanted", "100:1 101:2 102:3", 0, "100:1 101:2 102:3");
        row("neighbours", "10:1 90:2 120:3 200:4 300:5", 1, "90:2 120:3 200:4");
        row("only before", "10:1 90:2", 4, "90:2");
        row("gaps", "100:1 110:2b 120:3s 130:4u 140:nan", 9,
            "100:1 110:nanb 120:nans 130:4u 140:nan");
        // a grid of 64 cut to the span: 100-128, 128-192, 192-200
        row("aggregates", "100:3 110:1 120:9 127:2 128:5 199:6", 3,
            "100-128:3/1/9/2*4 128-192:5/5/5/5*1 192-200:6/6/6/6*1");
        row("aggregates and neighbours", "99:7 100:3 110:1 120:9 127:2 200:8", 3,
            "99-100:7/7/7/7*1 100-128:3/1/9/2*4 200-201:8/8/8/8*1");
        row("gap at the end of one", "100:3 110:1 120:9 127:2b 150:5", 3,
            "100-128:3/1/9/nan*4b 128-192:5/5/5/5*1");
        row("gap at its begin, worst of all", "100:3s 110:1u 120:9 127:2", 3,
            "100-128:nan/1/9/2*4s");
        row("gaps only", "100:3b 110:1b 120:9b", 2, "100-128:nan/nan/nan/nan*3b");
    }

    void column()
    {
        QFETCH(QString, samples);
        QFETCH(int, maxPoints);
        HistoryColumnBuilder builder(100, 199, std::size_t(maxPoints));
        for (const QString &sample : samples.split(' ', Qt::SkipEmptyParts)) {
            QString number = sample.section(':', 1);
            const std::map<QChar, Quality> marks{
                {'b', Quality::Bad}, {'s', Quality::Stale}, {'u', Quality::Uncertain}};
            const auto mark = marks.find(number.back());
            if (mark != marks.end())
                number.chop(1);
            builder.Add(sample.section(':', 0, 0).toLongLong(), number.toDouble(),
                        mark != marks.end() ? mark->second : Quality::Good);
        }
        QTEST(textOf(builder.Take()), "column");
    }

    /// The same as what its description says, computed at leisure.
    void columnsAreAsDescribed()
    {
        std::mt19937 random(7);
        const auto upTo = [&random](int limit) { return int(random() % unsigned(limit)); };
        for (int round = 0; round < 500; ++round) {
            const Timestamp from = upTo(100000), to = from + upTo(100000);
            const std::size_t maxPoints = 2 + std::size_t(upTo(50));
            HistoryColumnBuilder builder(from, to, maxPoints);
            Samples samples;
            for (Timestamp time = upTo(150000); time < 200000; time += 1 + upTo(2000)) {
                const double number = upTo(9) == 0 ? qQNaN() : upTo(1000);
                samples.push_back({time, number, upTo(3) ? Quality::Good : Quality(upTo(4))});
                builder.Add(time, number, samples.back().quality);
            }
            const QString got = textOf(builder.Take());
            const QString wanted = textOf(described(samples, from, to, maxPoints));
            QVERIFY2(got == wanted, qPrintable(QString("%1\n%2\n%3").arg(round).arg(got, wanted)));
        }
    }

    void sessionKeepsTheLatest_data()
    {
        const Rows<int, int> row("capacity", "offered");
        row("less than there is room for", 100, 50);
        row("few", 1, 100);
        row("many", 1000, 5000);
        row("more than a block", 50000, 200000);
    }

    void sessionKeepsTheLatest()
    {
        QFETCH(int, capacity);
        QFETCH(int, offered);
        SessionHistory history{std::size_t(capacity)};
        for (int i = 1; i <= offered; ++i)
            history.Offer(i, i);
        const std::atomic<bool> isCancelled{false};
        const auto read = [&](Timestamp from, Timestamp to) {
            HistoryColumnBuilder builder(from, to, 0);
            const Result result = history.Read(builder, isCancelled);
            return result ? builder.Take() : throw std::logic_error(result.ToString());
        };
        const HistoryColumn all = read(0, offered);
        const int kept = int(all.times.size());
        QVERIFY(kept >= std::min(capacity, offered) && kept <= capacity + 2 * 4096);
        QCOMPARE(all.times.back(), Timestamp(offered));
        QCOMPARE(all.times.front(), Timestamp(offered - kept + 1));
        QCOMPARE(textOf(read(offered - 3, offered - 2)), kept < 5
                                                             ? QString()
                                                             : QString("%1:%1 %2:%2 %3:%3 %4:%4")
                                                                   .arg(offered - 4)
                                                                   .arg(offered - 3)
                                                                   .arg(offered - 2)
                                                                   .arg(offered - 1));
    }

    void answersInOrderOfUrgency()
    {
        Service s;
        HistoryInquiry export_, plot, later;
        std::string order;
        std::promise<void> done;
        HistoryRequest background = s.request({0, 1});
        background.priority = HistoryPriority::Background;
        QVERIFY(export_.Ask(s.service, background, [&](const Answer &answer) {
            order += "export " + std::to_string(answer->columns.size());
            done.set_value();
        }));
        QTRY_COMPARE(s.gates[0]->asked, 1);
        QVERIFY(plot.Ask(s.service, s.request({0, 2, -1}), [&](const Answer &answer) {
            order += "plot ";
            for (const auto &column : answer->columns)
                order += std::to_string(column->times.size()) + "/" +
                         std::to_string(column->result.GetType()) + " ";
        }));
        QCOMPARE(s.gates[1]->asked, 0);
        for (const auto &gate : s.gates)
            gate->isOpen = true;
        done.get_future().wait();
        QCOMPARE(order, "plot 1/1 0/" + std::to_string(Result::NotAvailable) + " 0/" +
                            std::to_string(Result::NotFound) + " export 2");
        HistoryRequest wrong = s.request({0});
        wrong.from = 3;
        QCOMPARE(later.Ask(s.service, wrong, {}).GetType(), Result::InvalidArgument);
        QCOMPARE(later.Ask(s.service, {}, {}).GetType(), Result::InvalidArgument);
    }

    void cancelsAndReplaces()
    {
        Service s;
        std::atomic<int> answers{0};
        const auto count = [&](const Answer &) { ++answers; };
        HistoryInquiry plot;
        QVERIFY(plot.Ask(s.service, s.request({0, 1}), count));
        QTRY_COMPARE(s.gates[0]->asked, 1);
        s.gates[1]->isOpen = true; // the first request hangs in the other one until it is replaced
        std::promise<Answer> second;
        QVERIFY(plot.Ask(s.service, s.request({1}),
                         [&](const Answer &answer) { second.set_value(answer); }));
        QCOMPARE(second.get_future().get()->columns.size(), std::size_t(1));
        {
            HistoryInquiry gone;
            QVERIFY(gone.Ask(s.service, s.request({0}), count));
        }
        // What is accepted is answered, also when the history is closed.
        std::promise<Answer> closed;
        QVERIFY(plot.Ask(s.service, s.request({0, 1}),
                         [&](const Answer &answer) { closed.set_value(answer); }));
        QTRY_VERIFY(s.gates[0]->asked >= 2);
        s.service.Stop();
        const Answer answer = closed.get_future().get();
        QCOMPARE(answer->result.GetType(), Result::Cancelled);
        QCOMPARE(answer->columns.size(), std::size_t(2));
        QCOMPARE(answer->columns[1]->result.GetType(), Result::Cancelled);
        QCOMPARE(answers, 0);
        // Also when its last signal was being read.
        const int asked = s.gates[0]->asked;
        std::promise<Answer> last;
        QVERIFY(
            plot.Ask(s.service, s.request({0}), [&](const Answer &came) { last.set_value(came); }));
        QTRY_VERIFY(s.gates[0]->asked > asked);
        s.service.Stop();
        QCOMPARE(last.get_future().get()->result.GetType(), Result::Cancelled);
    }

    void stationRemembersItsSession()
    {
        ManualClock &clock = ManualClock::Use();
        const QTemporaryDir directory;
        CoreFixture f(directory);
        auto *level = f.add<BasicSignal>("memorySignal", f.root(), "level");
        auto *name = f.add<BasicSignal>("memorySignal", f.root(), "name", {{"type", "string"}});
        auto *source = f.add<archiverSourceConnector>("archiverSource", f.root(), "history",
                                                      {{"signal", idOf(level)}});
        QCOMPARE(source->GetNodeType().GetFamily(), NodeType::TypeArchive);
        QCOMPARE(source->GetSource(), static_cast<BasicNode *>(level));
        QVERIFY(source->isValid().empty());
        f.add("archiverSource", f.root(), "again", {{"signal", idOf(level)}});
        for (const std::string &wrong : {idOf(name), std::string("0")})
            QVERIFY(
                !f.add("archiverSource", f.root(), "w", {{"signal", wrong}})->isValid().empty());
        level->GetCell()->Publish(1.0); // before anybody listens
        clock.Advance(ManualClock::second);
        QVERIFY(f.core.Start());
        QCOMPARE(f.journalledText("Не запущен").size(), std::size_t(2)); // again and no signal
        const Timestamp start = clock.Now();
        for (int i = 2; i <= 4; ++i) {
            level->GetCell()->Publish(i);
            clock.Advance(ManualClock::second);
        }
        level->GetCell()->Degrade(Quality::Stale, Result());

        const auto ask = [&](Timestamp from, Timestamp to, std::size_t maxPoints) {
            HistoryInquiry inquiry;
            HistoryRequest request;
            request.from = from;
            request.to = to;
            request.nodes = {level->GetNodeLink(), name->GetNodeLink()};
            request.maxPoints = maxPoints;
            std::promise<Answer> answer;
            const Result asked = inquiry.Ask(f.core.GetHistory(), request,
                                             [&](const Answer &came) { answer.set_value(came); });
            return asked ? answer.get_future().get() : throw std::logic_error(asked.ToString());
        };
        Answer answer = ask(start - 1, 0, 0);
        auto samples = SignalHistoryResponse::AllOf(*answer);
        QCOMPARE(samples.size(), std::size_t(5)); // with the one before the span
        QCOMPARE(samples[0].GetTime(), std::uint64_t(start / 1000 - 1000));
        QCOMPARE(samples[3].GetNodeId(), level->GetId());
        QCOMPARE(samples[3].GetValue().ToDouble(), 4.);
        QVERIFY(!samples[3].getIntervalSample());
        QCOMPARE(samples[4].GetValue().GetQuality(), Quality::Bad); // nothing is known from there
        QVERIFY(std::isnan(samples[4].ToDouble()));
        const SignalHistoryResponse copy = samples[3];
        samples.clear();
        answer = ask(start, start + 10 * ManualClock::second, 2);
        QCOMPARE(copy.ToDouble(), 4.);
        samples = SignalHistoryResponse::AllOf(*answer);
        QVERIFY(samples.size() <= 3);
        const IntervalSample *interval = samples[1].getIntervalSample();
        QVERIFY(interval && interval == samples[1].GetValue().getIntervalSample());
        QCOMPARE(interval->maximum, 4.);

        const Timestamp moment = start + 1500000;
        const auto values = FetchValueResponse::At(moment, *ask(moment, moment, 0)).values;
        QCOMPARE(values[0].GetValue().ToDouble(), 3.);
        QCOMPARE(values[0].GetValue().GetSourceTime(), start + ManualClock::second);
        QCOMPARE(values[1].GetValue().GetError().GetType(), Result::NotFound);
        QCOMPARE(FetchValueResponse::At(5, *ask(5, 5, 0)).values[0].GetValue().GetError().GetType(),
                 Result::NotFound);

        // Whoever keeps an answered inquiry does not keep the history of that session.
        HistoryInquiry kept;
        std::promise<void> answered;
        HistoryRequest all;
        all.to = std::numeric_limits<Timestamp>::max();
        all.nodes = {level->GetNodeLink()};
        all.maxPoints = 2;
        QVERIFY(kept.Ask(f.core.GetHistory(), all, [&](const Answer &came) {
            answer = came;
            answered.set_value();
        }));
        answered.get_future().wait();
        for (const IntervalSample &sample : answer->columns[0]->intervals)
            QVERIFY(sample.end > sample.begin);
        QVERIFY(f.core.Stop());
        QCOMPARE(ask(start, 0, 0)->columns[0]->result.GetType(), Result::NotAvailable);
        QVERIFY(f.core.Start());
        QCOMPARE(f.journalledText("Не запущен").size(), std::size_t(4)); // the same two again

        // Guests may not look at the level, whichever way it is asked for.
        f.core.SetWorkMode(WorkModeRuntime);
        auto *users = f.add("authentication", f.add("station", f.root()));
        ConfigNode *guests = f.add("role", users);
        f.add("grant", guests, nullptr,
              {{"mode", "deny"}, {"privileges", "view"}, {"scope", idOf(level)}});
        ProjectFixture::set(users, {{"guestRole", idOf(guests)}});
        answer = ask(start, 0, 0);
        QCOMPARE(answer->columns[0]->result.GetType(), Result::AccessDenied);
        QVERIFY(answer->columns[0]->times.empty());
    }
};

QTEST_GUILESS_MAIN(TestHistory)
#include "tst_history.moc"
