#include "apps/plant/PlantServer.h"
#include "apps/plant/RegisterMap.h"
#include "nodes/ProjectFixture.h"
#include "nodes/signals/BasicSignal.h"

#include <QtTest>

#include <thread>

using namespace Nodes;

namespace {

/// The simulated plant at a loopback port.
struct RunningPlant
{
    RunningPlant() : server(site, {})
    {
        if (!server.listen().empty())
            throw std::logic_error("no loopback port");
        thread = std::thread([this] { server.run(stop); });
    }
    ~RunningPlant()
    {
        stop = true;
        thread.join();
    }

    Plant::PlantSite site;
    Plant::PlantServer server;
    std::atomic<bool> stop{false};
    std::thread thread;
};

const char *tableName(Plant::RegisterTable table)
{
    static constexpr const char *names[] = {"coils", "discrete", "holding", "input"};
    return names[int(table)];
}

const char *typeName(Plant::RegisterType type)
{
    static constexpr const char *names[] = {"bool",   "int16",   "uint16", "uint32",
                                            "uint32", "float32", "float32"};
    return names[int(type)];
}

/// A device whose signals are the whole register map.
struct Station
{
    explicit Station(int port)
    {
        set(driver, "port", std::to_string(port));
        set(driver, "timeout", "300");
        set(driver, "reconnectMin", "10");
        set(driver, "reconnectMax", "50");
        for (const auto table : {Plant::RegisterTable::Coil, Plant::RegisterTable::DiscreteInput,
                                 Plant::RegisterTable::Holding, Plant::RegisterTable::Input})
            addTable(table);
    }
    ~Station() { driver->Stop(); }

    static void set(ConfigNode *node, const char *key, const std::string &value)
    {
        const Result result = node->SetPropertyText(key, value);
        if (!result)
            throw std::logic_error(result.ToString());
    }
    void addTable(Plant::RegisterTable table)
    {
        ConfigNode *group = project.add("modbusGroup", driver, tableName(table));
        set(group, "table", tableName(table));
        set(group, "count", std::to_string(Plant::tableSize(table)));
        set(group, "period", "50");
        for (const Plant::RegisterEntry &row : Plant::registerMap()) {
            if (row.table == table)
                addSignal(group, row);
        }
    }
    void addSignal(ConfigNode *group, const Plant::RegisterEntry &row)
    {
        ConfigNode *signal = project.add("modbusSignal", group, row.name.c_str());
        const bool isCdab = row.type == Plant::RegisterType::UInt32Cdab ||
                            row.type == Plant::RegisterType::Float32Cdab;
        set(signal, "offset", std::to_string(row.address));
        set(signal, "dataType", typeName(row.type));
        set(signal, "byteOrder", isCdab ? "CDAB" : "ABCD");
        set(signal, "scale", QByteArray::number(row.scale, 'g', 17).toStdString());
        set(signal, "writable", row.write ? "true" : "false");
        set(signal, "maximum", "0");
    }
    BasicSignal *signal(const std::string &name) const
    {
        for (const NodeLink &link : driver->GetNodes(true)) {
            if (link->GetName() == name)
                return dynamic_cast<BasicSignal *>(link.GetNode());
        }
        throw std::logic_error(name);
    }
    int countGood() const
    {
        int count = 0;
        for (const NodeLink &link : driver->GetNodes(true)) {
            const auto *signal = dynamic_cast<BasicSignal *>(link.GetNode());
            count += signal && signal->GetValue().IsGood();
        }
        return count;
    }

    ProjectFixture project;
    ConfigNode *driver = project.add("modbusDriver", project.root(), "plant");
};

} // namespace

class TestModbusAgainstPlant : public QObject
{
    Q_OBJECT

private slots:
    void readsTheWholeMapAndWrites();
    void lineFaults_data();
    void lineFaults();
};

void TestModbusAgainstPlant::readsTheWholeMapAndWrites()
{
    RunningPlant plant;
    Station station(plant.server.port());
    QVERIFY(station.driver->Start().IsSuccess());
    QTRY_COMPARE(station.countGood(), int(Plant::registerMap().size()));

    BasicSignal *setpoint = station.signal("K1.Temp.Setpoint");
    const double wanted = setpoint->GetValue().ToDouble() - 5;
    QVERIFY(setpoint->WriteValue(wanted).IsSuccess());
    QTRY_COMPARE(setpoint->GetValue().ToDouble(), wanted);
    BasicSignal *pump = station.signal("K1.Pump1.Start");
    QVERIFY(pump->WriteValue(true).IsSuccess());
    QTRY_VERIFY(pump->GetValue().ToBool());
    QCOMPARE(station.countGood(), int(Plant::registerMap().size()));
}

void TestModbusAgainstPlant::lineFaults_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("late") << int(Plant::LineFaultKind::Late);
    QTest::newRow("garbage") << int(Plant::LineFaultKind::Garbage);
    QTest::newRow("truncate") << int(Plant::LineFaultKind::Truncate);
    QTest::newRow("silent") << int(Plant::LineFaultKind::Silent);
}

void TestModbusAgainstPlant::lineFaults()
{
    QFETCH(int, fault);
    RunningPlant plant;
    Station station(plant.server.port());
    QVERIFY(station.driver->Start().IsSuccess());
    QTRY_COMPARE(station.countGood(), int(Plant::registerMap().size()));
    QVERIFY(station.signal("Line.Fault")->WriteValue(fault).IsSuccess());
    QTRY_COMPARE(station.countGood(), 0);
    QCOMPARE(station.signal("K1.Temp.Setpoint")->WriteValue(70).GetType(), Result::NotConnected);
}

QTEST_GUILESS_MAIN(TestModbusAgainstPlant)
#include "tst_modbus_against_plant.moc"
