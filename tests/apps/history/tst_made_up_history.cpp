// The past that is made up for signals: what it is like, and the tables that tell what it is like.
#include "nodes/ProjectFixture.h"
#include "support/Rows.h"

#include "apps/common/history/CsvReader.h"
#include "apps/common/history/HistoryGenerator.h"
#include "apps/common/history/HistoryProfiles.h"
#include "apps/common/history/SignalCurve.h"
#include "apps/common/process/SpanText.h"

#include "nodes/signals/BasicSignal.h"

#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QtTest>

#include <cmath>
#include <set>

using namespace Host;
using Kind = SignalProfile::Kind;
using Nodes::Timestamp;

Q_DECLARE_METATYPE(SignalProfile::Kind)

namespace {

constexpr Timestamp second = 1000000;
constexpr Timestamp minute = 60 * second;
constexpr Timestamp hour = 60 * minute;
constexpr Timestamp day = 24 * hour;
constexpr Timestamp end = 20000 * day + 9 * hour;

} // namespace

class MadeUpHistoryTest : public QObject
{
    Q_OBJECT

private slots:
    void guessesFromWhatIsConfigured_data()
    {
        const Rows<QByteArray, QByteArray, Kind, double, double> row("name", "attributes", "kind",
                                                                     "least", "most");
        row("K1.Temp", "K1.Temp", "unit=°C;minimum=0;maximum=150", Kind::Process, 80, 130);
        row("K1.Flow", "K1.Flow", "unit=т/ч;minimum=0;maximum=400", Kind::Process, 100, 320);
        row("K1.Pump2.Running", "K1.Pump2.Running", "type=bool", Kind::Duty, 0, 1);
        row("K1.Pump2.Fault", "K1.Pump2.Fault", "type=bool", Kind::State, 0, 1);
        row("Наработка", "Наработка", "unit=ч", Kind::Counter, 0, 1000);
        row("Уставка", "Уставка", "minimum=10;maximum=20", Kind::Setpoint, 14, 17);
        row("Режим", "Режим", "type=string", Kind::Constant, 0, 0);
    }
    void guessesFromWhatIsConfigured()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, attributes);
        QFETCH(double, least);
        QFETCH(double, most);
        ProjectFixture project;
        const auto &signal = add(project, name, attributes);
        const SignalProfile profile = SignalProfile::guess(signal);
        QTEST(profile.kind, "kind");
        const SignalCurve curve(profile, {7, end, 0}, signal.GetName());
        for (Timestamp time = end - 30 * day; time < end; time += 10 * minute) {
            const double value = curve.at(time);
            QVERIFY2(value >= least && value <= most, qPrintable(QString::number(value)));
        }
    }
    void staysWithinAlarms()
    {
        ProjectFixture project;
        auto &signal = add(project, "T", "unit=°C;minimum=0;maximum=150");
        Nodes::ConfigNode *high = project.add("alarmLimit", &signal);
        QVERIFY(high->SetPropertyText("limit", "60"));
        const SignalCurve curve(SignalProfile::guess(signal), {7, end, 0}, "T");
        for (Timestamp time = end - 30 * day; time < end; time += 10 * minute)
            QVERIFY(curve.at(time) < 60);
    }

    void behavesAsItsKind()
    {
        SignalProfile profile;
        profile.mean = 100;
        profile.swing = 2;
        const auto curve = [&](Kind kind) {
            profile.kind = kind;
            return SignalCurve(profile, {7, end, 3 * hour}, "K1.X");
        };
        const SignalCurve process = curve(Kind::Process);
        const SignalCurve counter = curve(Kind::Counter);
        const SignalCurve setpoint = curve(Kind::Setpoint);
        const SignalCurve first = curve(Kind::Duty);
        profile.isSecond = true;
        const SignalCurve second = curve(Kind::Duty);
        int steps = 0;
        std::set<double> values;
        for (Timestamp time = end - 10 * day; time < end; time += minute) {
            QVERIFY(counter.at(time) <= counter.at(time + minute));
            QCOMPARE(first.at(time) + second.at(time), 100.0);
            steps += setpoint.at(time) != setpoint.at(time + minute);
            values.insert(process.at(time));
        }
        QVERIFY(steps > 0 && steps < 20);
        QVERIFY(values.size() > 20);
        // Live values go on from there.
        QVERIFY(std::abs(process.at(end) - 100) < 0.5);
        QCOMPARE(counter.at(end), 100.0);
        QCOMPARE(setpoint.at(end), 100.0);
        QCOMPARE(first.at(end), 100.0);
        // At six in the morning, local time, the other one takes over.
        const Timestamp change = 19999 * day + 3 * hour;
        QCOMPARE(first.at(change) == 100, first.at(change - minute) == 0);
    }
    void goesDownTogether()
    {
        SignalProfile tripped, power, other;
        tripped.kind = Kind::Constant;
        tripped.down = 1;
        power.mean = 1000;
        power.down = 0;
        other = power;
        const PlantDays days{7, end, 0};
        const SignalCurve trip(tripped, days, "K1.Tripped");
        const SignalCurve one(power, days, "K1.Power");
        const SignalCurve two(other, days, "K2.Power");
        int together = 0;
        int apart = 0;
        for (Timestamp time = end - 60 * day; time < end; time += minute) {
            if (trip.at(time) == 0 || trip.at(time - 20 * minute) == 0)
                continue;
            together += one.at(time) < 50;
            apart += one.at(time) >= 50 || two.at(time) < 50;
        }
        QVERIFY2(together > 10 && apart == 0,
                 qPrintable(QStringLiteral("%1 %2").arg(together).arg(apart)));
    }
    void isTheSameForTheSameSeed()
    {
        SignalProfile profile;
        profile.mean = 50;
        profile.swing = 5;
        profile.noise = 1;
        const SignalCurve curve(profile, {7, end, 0}, "T");
        const SignalCurve same(profile, {7, end, 0}, "T");
        const SignalCurve another(profile, {8, end, 0}, "T");
        int different = 0;
        for (Timestamp time = end; time > end - 5 * day; time -= 7 * minute) {
            QCOMPARE(same.at(time), curve.at(time));
            different += another.at(time) != curve.at(time);
        }
        QVERIFY(different > 500);
    }

    void readsProfiles_data()
    {
        const Rows<QByteArray, QByteArray> row("line", "told");
        row("T,process,42,1,,", "T,process,42,1,,", "");
        row("77,setpoint,42,,,", "77,setpoint,42,,,", "");
        row("T,process,42,1,", "T,process,42,1,", ":2:1: a line has the fields");
        row("T,wavy,42,1,,", "T,wavy,42,1,,", ":2:3: \"wavy\" is no kind");
        row("T,process,warm,1,,", "T,process,warm,1,,", ":2:11: \"warm\" is no number");
    }
    void readsProfiles()
    {
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, told);
        const QTemporaryDir directory;
        QFile file(directory.filePath(HistoryProfiles::FileName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("signal,kind,mean,swing,noise,down\n" + line + '\n');
        file.close();
        HistoryProfiles profiles;
        const Nodes::Result loaded = profiles.load(directory.path().toStdString());
        QCOMPARE(bool(loaded), told.isEmpty());
        QVERIFY2(QByteArray::fromStdString(loaded.GetDetail()).contains(told),
                 loaded.GetDetail().c_str());
        ProjectFixture project;
        const auto &signal = add(project, "T", "");
        if (told.isEmpty() && line.startsWith('T'))
            QCOMPARE(profiles.of(signal).mean, 42.0);
    }

    // A record may end anywhere in the buffer that it is read through.
    void readsTablesOfAnySize()
    {
        QTemporaryFile file;
        QVERIFY(file.open());
        const int count = 30000;
        QByteArray table = "\xef\xbb\xbf";
        for (int i = 0; i < count; ++i)
            table += QByteArray::number(i) + ",\"a\"\"" + QByteArray(i % 37, 'x') + "\n\",ы" +
                     (i % 2 ? "\r\n" : "\n");
        file.write(table);
        file.seek(0);
        CsvReader reader(file.handle());
        for (int i = 0; i < count; ++i) {
            QCOMPARE(reader.next(), CsvReader::Step::Record);
            QCOMPARE(int(reader.fields().size()), 3);
            QCOMPARE(reader.fields()[0].text, std::to_string(i));
            QCOMPARE(reader.fields()[1].text, "a\"" + std::string(std::size_t(i % 37), 'x') + "\n");
            QCOMPARE(reader.fields()[2].text, std::string("ы"));
            QCOMPARE(reader.line(), std::size_t(2 * i + 1));
            QCOMPARE(reader.fields()[2].column, std::size_t(3));
        }
        QCOMPARE(reader.next(), CsvReader::Step::End);
    }

    void readsSpans_data()
    {
        const Rows<QByteArray, Timestamp> row("text", "span");
        row("90s", "90s", 90 * second);
        row("30d", "30d", 30 * day);
        row("1d12h", "1d12h", 36 * hour);
        row("2w", "2w", 14 * day);
        row("1y", "1y", 365 * day);
        for (const char *none : {"", "30", "d", "0s", "-1d", "1.5h", "1d ", "101y", "99999999999d"})
            row(none, none, 0);
    }
    void readsSpans()
    {
        QFETCH(QByteArray, text);
        QTEST(Host::parseSpan(text.toStdString()).value_or(0), "span");
    }
    void choosesAnInterval()
    {
        QCOMPARE(HistoryGenerator::intervalFor(hour), second);
        QCOMPARE(HistoryGenerator::intervalFor(30 * day), minute);
        for (Timestamp span = hour; span < 40000 * day; span *= 3)
            QVERIFY(span / HistoryGenerator::intervalFor(span) <= 45000);
    }

private:
    static Nodes::BasicSignal &add(ProjectFixture &project, const QByteArray &name,
                                   const QByteArray &attributes)
    {
        Nodes::ConfigNode *signal = project.add("memorySignal", project.root());
        signal->SetName(name.toStdString());
        for (const QByteArray &attribute : attributes.split(';')) {
            const int equals = attribute.indexOf('=');
            if (equals > 0 && !signal->SetPropertyText(attribute.left(equals).toStdString(),
                                                       attribute.mid(equals + 1).toStdString()))
                qFatal("%s", attribute.constData());
        }
        return static_cast<Nodes::BasicSignal &>(*signal);
    }
};

QTEST_GUILESS_MAIN(MadeUpHistoryTest)
#include "tst_made_up_history.moc"
