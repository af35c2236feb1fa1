#include "nodes/CoreFixture.h"
#include "nodes/drivers/ModbusTestServer.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/standin/StandInCurve.h"
#include "nodes/signals/BasicSignal.h"
#include "support/Rows.h"

#include <set>

using namespace Nodes;

namespace {

/// A real device with a register to read and one to write, and a signal of this process.
struct Plant : CoreFixture
{
    explicit Plant(const QTemporaryDir &directory, const ModbusTestServer &server)
        : CoreFixture(directory),
          station(add("station", root(), "Станция", {{"journalLocation", "elsewhere.sqlite"}})),
          device(add<modbusDriver>("modbusDriver", station, "ПЛК",
                                   {{"port", std::to_string(server.port())}})),
          group(add("modbusGroup", device, "Г1", {{"count", "10"}, {"period", "10"}})),
          measured(add<BasicSignal>("modbusSignal", group, "Т01",
                                    {{"minimum", "20"}, {"maximum", "30"}})),
          setpoint(add<BasicSignal>("modbusSignal", group, "Уставка",
                                    {{"offset", "1"}, {"writable", "true"}})),
          link(add<BasicSignal>("driverStatus", device, "Связь")),
          memory(add<BasicSignal>("memorySignal", device, "Память"))
    {
    }
    void start(bool isSimulated)
    {
        core.SetSimulated(isSimulated);
        QVERIFY(core.Start());
    }

    ConfigNode *station;
    modbusDriver *device;
    ConfigNode *group;
    BasicSignal *measured;
    BasicSignal *setpoint;
    BasicSignal *link;
    BasicSignal *memory;
};

} // namespace

class StandInTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingReachesTheDevice_data()
    {
        const Rows<bool> row("isSimulated");
        row("simulated", true);
        row("for real", false); // the device does hear of a station that is not simulated
    }
    void nothingReachesTheDevice()
    {
        QFETCH(bool, isSimulated);
        const QTemporaryDir directory;
        ModbusTestServer server;
        Plant plant(directory, server);
        const SignalValue kept = plant.memory->GetValue();
        plant.start(isSimulated);
        QTRY_VERIFY(plant.setpoint->GetValue().IsGood());
        QTRY_VERIFY(plant.link->GetValue().IsGood() && plant.link->GetValue().ToBool());
        QVERIFY(plant.setpoint->WriteValue(42.));
        QTRY_COMPARE(plant.setpoint->GetValue().ToDouble(), 42.);
        QCOMPARE(server.requests > 0, !isSimulated);
        QCOMPARE(int(server.words[1]), isSimulated ? 0 : 42);
        QCOMPARE(plant.memory->GetValue().ToString(), kept.ToString());
        QCOMPARE(plant.journalledText("имитатором").size(), std::size_t(isSimulated));
        const bool isElsewhere = QFile::exists(directory.filePath("data/elsewhere.sqlite"));
        QCOMPARE(isElsewhere, !isSimulated);
        QVERIFY(plant.core.Stop());
        QVERIFY(!plant.measured->GetValue().IsGood());
        QVERIFY(!plant.setpoint->WriteValue(43.) || !isSimulated);
    }

    void valuesStayInTheirRange_data()
    {
        // steady: does not move by itself
        const Rows<QString, QString, QString, bool, double, double, bool> row(
            "type", "minimum", "maximum", "writable", "least", "most", "steady");
        row("a temperature", "double", "20", "30", false, 20, 30, false);
        row("below zero", "int", "-40", "-10", false, -40, -10, false);
        row("a counter", "ulong", "0", "5", false, 0, 5, false);
        row("no range", "double", "7", "7", false, 0, 100, false);
        row("a contact", "bool", "0", "100", false, 0, 1, false);
        row("a set-point", "double", "20", "30", true, 25, 25, true);
        row("a switch", "bool", "0", "1", true, 0, 0, true);
    }
    void valuesStayInTheirRange()
    {
        QFETCH(QString, type);
        QFETCH(QString, minimum);
        QFETCH(QString, maximum);
        QFETCH(bool, writable);
        QFETCH(double, least);
        QFETCH(double, most);
        QFETCH(bool, steady);
        ProjectFixture f;
        const auto *signal = f.add<BasicSignal>("memorySignal", f.root(), "С",
                                                {{"type", type.toStdString()},
                                                 {"minimum", minimum.toStdString()},
                                                 {"maximum", maximum.toStdString()},
                                                 {"writable", writable ? "true" : "false"}});
        const StandInCurve curve(*signal);
        std::set<double> seen;
        for (int second = 0; second < 1200; ++second) {
            const SignalValue value = curve.At(second);
            QCOMPARE(value.GetType(), signal->GetValueType());
            QVERIFY2(value.ToDouble() >= least && value.ToDouble() <= most,
                     value.ToString().c_str());
            seen.insert(value.ToDouble());
        }
        QCOMPARE(seen.size() == 1, steady);
        QCOMPARE(StandInCurve(*signal).At(77).ToString(), curve.At(77).ToString());
    }
};

QTEST_GUILESS_MAIN(StandInTest)
#include "tst_stand_in.moc"
