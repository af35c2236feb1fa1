// The pumping station of projects/pumps, without a clock: what its formulas make of commands.
#include "nodes/drivers/simulator/SimulatorEngine.h"
#include "nodes/drivers/simulator/simulatorSignal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "support/Rows.h"

#include <QtTest>

#include <map>

using namespace Nodes;

namespace {

constexpr double step = 0.5; // s
constexpr int hours = 2 * 3600;

class PumpingStation
{
public:
    PumpingStation()
    {
        if (!m_core.LoadProject(STATION_SOURCE_DIR "/projects/pumps/project.xml"))
            qFatal("cannot read the project");
        NodeLinks links;
        m_core.GetNodesCollection()->FindNodes(NodeType::TypeSignal, &links);
        for (const NodeLink &link : links) {
            if (const auto *signal = dynamic_cast<simulatorSignal *>(link.GetNode()))
                add(*signal);
        }
    }
    void run(int seconds)
    {
        for (const double end = m_time + seconds; m_time < end; m_time += step)
            (void)m_engine.Step(m_time, step);
    }
    void write(const QString &name, double value) { m_engine.Write(indexOf(name), value); }
    const SignalValue &shown(const QString &name) const
    {
        return m_engine.GetOutcome(indexOf(name));
    }
    QStringList failures() const { return m_failures; }

private:
    void add(const simulatorSignal &signal)
    {
        SimulatedSignal simulated;
        simulated.path = signal.GetPath();
        const std::string driver = "Имитатор станции/";
        simulated.relativePath = simulated.path.substr(simulated.path.find(driver) + driver.size());
        simulated.formula = signal.GetFormula();
        simulated.type = signal.GetValueType();
        simulated.initial = signal.GetInitialValue();
        m_index[QString::fromStdString(simulated.relativePath)] = m_engine.GetCount();
        m_engine.Add(std::move(simulated));
    }
    std::size_t indexOf(const QString &name) const
    {
        const auto found = m_index.find(name);
        if (found == m_index.end())
            qFatal("no signal %s", qPrintable(name));
        return found->second;
    }

    systemCore m_core;
    QStringList m_failures;
    SimulatorEngine m_engine{[this](const SimulatedSignal &signal, const Result &error) {
        m_failures += QString::fromStdString(signal.relativePath + ": " + error.ToString());
    }};
    std::map<QString, std::size_t> m_index;
    double m_time = 0;
};

} // namespace

class SamplePumpsTest : public QObject
{
    Q_OBJECT

private slots:
    void follows_data()
    {
        // written: "name=value; ..."; seen after the seconds: "name from to; ..."
        const Rows<QString, int, QString> row("written", "seconds", "seen");
        row("untouched", "", hours,
            "Напор/Давление 4.3 4.7; Напор/Насосов в работе 2 2; Резервуары/Резервуар 1/Уровень 2 "
            "4; "
            "Резервуары/Резервуар 2/Уровень 2 4; Напор/Частота приводов 36 49.9");
        row("a third pump", "Насосы/Насос 3/Пуск=1", 300,
            "Напор/Насосов в работе 3 3; Насосы/Насос 3/Расход 60 120; Напор/Давление 4.2 4.8");
        row("one pump alone", "Насосы/Насос 2/Пуск=0", 300,
            "Насосы/Насос 2/Расход 0 0.5; Насосы/Насос 2/Ток 0 0.5; Насосы/Насос 2/Задвижка 0 0; "
            "Напор/Давление 2.1 3.6");
        row("a pump that trips", "Насосы/Насос 1/Авария=1", 300,
            "Насосы/Насос 1/Работает 0 0; Напор/Насосов в работе 1 1");
        row("no pump", "Насосы/Насос 1/Пуск=0; Насосы/Насос 2/Пуск=0", 900,
            "Напор/Расход 0 1; Напор/Давление 0.7 0.9; Резервуары/Резервуар 1/Уровень 3.6 4.3");
        row("a tank without water", "Приток/Задвижка 1/Открыть=0", 3600,
            "Приток/Задвижка 1/Расход 0 0.1; Резервуары/Резервуар 1/Уровень 0 0.8; "
            "Резервуары/Резервуар 2/Уровень 1 3; Напор/Насосов в работе 2 2");
        row("no water at all", "Приток/Задвижка 1/Открыть=0; Приток/Задвижка 2/Открыть=0", hours,
            "Насосы/Насос 1/Работает 0 0; Напор/Расход 0 1");
        row("a lower set-point", "Напор/Задание давления=3.5", 300, "Напор/Давление 3.3 3.7");
    }
    void follows()
    {
        QFETCH(QString, written);
        QFETCH(int, seconds);
        QFETCH(QString, seen);
        PumpingStation station;
        station.run(60);
        for (const QString &order : written.split("; ", Qt::SkipEmptyParts))
            station.write(order.section('=', 0, 0), order.section('=', 1).toDouble());
        station.run(seconds);
        QCOMPARE(station.failures(), QStringList());
        for (const QString &expected : seen.split("; ")) {
            const QString name = expected.section(' ', 0, -3);
            const double value = station.shown(name).ToDouble();
            QVERIFY2(value >= expected.section(' ', -2, -2).toDouble() &&
                         value <= expected.section(' ', -1).toDouble(),
                     qPrintable(expected + ": " + QString::number(value)));
        }
    }
};

QTEST_GUILESS_MAIN(SamplePumpsTest)
#include "tst_sample_pumps.moc"
