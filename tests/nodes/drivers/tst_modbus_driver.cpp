#include "nodes/ProjectFixture.h"
#include "nodes/drivers/ModbusTestServer.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace Nodes;

namespace {

using Settings = std::initializer_list<std::pair<const char *, const char *>>;

/// A project with one device that polls the test server.
struct Device
{
    Device()
    {
        set(driver, {{"timeout", "200"}, {"reconnectMin", "10"}, {"reconnectMax", "50"}});
        set(driver, {{"port", std::to_string(server.port()).c_str()}});
        set(group, {{"table", "holding"}, {"count", "20"}, {"period", "20"}});
        set(level, {{"dataType", "int16"}, {"writable", "true"}, {"maximum", "0"}});
        set(status, {{"type", "bool"}});
        server.words[0] = 42;
    }
    ~Device() { driver->Stop(); }

    static void set(ConfigNode *node, Settings settings)
    {
        for (const auto &[key, value] : settings) {
            const Result result = node->SetPropertyText(key, value);
            if (!result)
                throw std::logic_error(result.ToString());
        }
    }
    BasicSignal *addSignal(ConfigNode *parent, const char *name, Settings settings)
    {
        auto *signal = static_cast<BasicSignal *>(project.add("modbusSignal", parent, name));
        set(signal, {{"writable", "true"}, {"maximum", "0"}});
        set(signal, settings);
        return signal;
    }
    bool isLive() const { return status->GetValue().ToBool() && level->GetValue().IsGood(); }
    bool isLost() const
    {
        const SignalValue link = status->GetValue();
        return link.IsGood() && !link.ToBool() && level->GetValue().GetQuality() == Quality::Bad;
    }

    ModbusTestServer server;
    ProjectFixture project;
    ConfigNode *driver = project.add("modbusDriver", project.root(), "device");
    ConfigNode *group = project.add("modbusGroup", driver, "group");
    BasicSignal *level = static_cast<BasicSignal *>(project.add("modbusSignal", group, "level"));
    BasicSignal *status = static_cast<BasicSignal *>(project.add("driverStatus", driver, "link"));
};

} // namespace

class TestModbusDriver : public QObject
{
    Q_OBJECT

private slots:
    void pollsAndStops();
    void losesAndRecovers_data();
    void losesAndRecovers();
    void refusedPort();
    void exceptionConcernsOneGroup();
    void writes_data();
    void writes();
    void failedWriteShowsTheDevicesValue();
    void neverSendsAnOverdueWrite();
    void misconfigured_data();
    void misconfigured();
    void unusableSettings();
    void stopsPromptly();
};

void TestModbusDriver::pollsAndStops()
{
    Device device;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLive());
    QCOMPARE(device.level->GetValue().ToDouble(), 42.);
    // Values that stay the same are fresh all the same.
    const Timestamp first = device.level->GetValue().GetSourceTime();
    QTRY_VERIFY(device.level->GetValue().GetSourceTime() > first);
    device.server.words[0] = 0xfffe;
    QTRY_COMPARE(device.level->GetValue().ToDouble(), -2.);

    QVERIFY(device.driver->Stop().IsSuccess());
    QVERIFY(!device.level->GetValue().IsGood());
    QVERIFY(!device.status->GetValue().IsGood());
    QCOMPARE(device.level->WriteValue(1).GetType(), Result::NotConnected);
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLive());
}

void TestModbusDriver::losesAndRecovers_data()
{
    QTest::addColumn<int>("fault");
    QTest::newRow("silent") << int(ModbusTestServer::Silent);
    QTest::newRow("late") << int(ModbusTestServer::Late);
    QTest::newRow("garbage") << int(ModbusTestServer::Garbage);
    QTest::newRow("answer to another request") << int(ModbusTestServer::OtherTransaction);
    QTest::newRow("truncated") << int(ModbusTestServer::Truncated);
    QTest::newRow("hangs up") << int(ModbusTestServer::HangUp);
}

void TestModbusDriver::losesAndRecovers()
{
    QFETCH(int, fault);
    Device device;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLive());

    device.server.lateMs = 400;
    device.server.fault = fault;
    device.server.words[0] = 7;
    QTRY_VERIFY(device.isLost());
    // The last value is kept for the record, marked.
    QVERIFY(device.level->GetValue().ToDouble() == 42 || device.level->GetValue().ToDouble() == 7);
    QCOMPARE(device.level->WriteValue(1).GetType(), Result::NotConnected);

    device.server.fault = ModbusTestServer::None;
    QTRY_VERIFY(device.isLive());
    QCOMPARE(device.level->GetValue().ToDouble(), 7.);
}

void TestModbusDriver::refusedPort()
{
    Device device;
    device.server.unplug();
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLost());
    QCOMPARE(device.level->GetValue().GetError().GetType(), Result::NotConnected);
    device.server.plug();
    QTRY_VERIFY(device.isLive());
}

void TestModbusDriver::exceptionConcernsOneGroup()
{
    Device device;
    ConfigNode *far = device.project.add("modbusGroup", device.driver, "far");
    Device::set(far, {{"start", "50"}, {"count", "2"}, {"period", "20"}});
    BasicSignal *lonely = device.addSignal(far, "lonely", {});
    device.server.refusedFrom = 50;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_COMPARE(lonely->GetValue().GetError().GetType(), Result::DeviceError);
    QVERIFY(lonely->GetValue().GetError().GetDetail().find("address") != std::string::npos);
    QTRY_VERIFY(device.isLive());

    device.server.refusedFrom = ModbusTestServer::size;
    QTRY_VERIFY(lonely->GetValue().IsGood());
}

void TestModbusDriver::writes_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("dataType");
    QTest::addColumn<bool>("isMultiple");
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("function");
    QTest::addColumn<int>("word"); // of the first register afterwards; 0x00f0 before

    const auto row = [](const char *name, const char *table, const char *type, bool isMultiple,
                        const char *value, int function, int word) {
        QTest::newRow(name) << table << type << isMultiple << value << function << word;
    };
    row("coil", "coils", "bool", false, "1", 5, 0xf0);
    row("coil by the function for many", "coils", "bool", true, "1", 15, 0xf0);
    row("register", "holding", "int16", false, "-3", 6, 0xfffd);
    row("register by the function for many", "holding", "uint16", true, "513", 16, 0x0201);
    row("float", "holding", "float32", false, "-1.5", 16, 0xbfc0);
    row("bit set", "holding", "bit", false, "1", 6, 0x00f8);
    row("logical register", "holding", "bool", false, "0", 6, 0);
}

void TestModbusDriver::writes()
{
    QFETCH(QString, table);
    QFETCH(QString, dataType);
    QFETCH(bool, isMultiple);
    QFETCH(QString, value);
    QFETCH(int, function);
    QFETCH(int, word);
    Device device;
    ConfigNode *group = device.project.add("modbusGroup", device.driver, "target");
    // Polled once an hour: what the signal shows comes from the read-back.
    Device::set(group, {{"start", "30"}, {"count", "4"}, {"period", "3600000"}});
    Device::set(group,
                {{"table", table.toUtf8()}, {"writeMultiple", isMultiple ? "true" : "false"}});
    BasicSignal *signal =
        device.addSignal(group, "target", {{"dataType", dataType.toUtf8()}, {"bit", "3"}});
    device.server.words[30] = 0x00f0;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(signal->GetValue().IsGood());

    QVERIFY(signal->WriteValue(value.toStdString()).IsSuccess());
    QTRY_COMPARE(signal->GetValue().ToDouble(), value.toDouble());
    QCOMPARE(int(device.server.lastWriteFunction), function);
    QCOMPARE(int(device.server.words[30]), word);
    QCOMPARE(bool(device.server.bits[30]), table == "coils");
}

void TestModbusDriver::failedWriteShowsTheDevicesValue()
{
    Device device;
    device.server.refusesWrites = true;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLive());
    QVERIFY(device.level->WriteValue(5).IsSuccess());
    const int before = device.server.requests;
    QTRY_VERIFY(device.server.requests > before + 2);
    QVERIFY(device.isLive());
    QCOMPARE(device.level->GetValue().ToDouble(), 42.);
    QCOMPARE(device.level->WriteValue(40000).GetType(), Result::OutOfRange);
}

void TestModbusDriver::neverSendsAnOverdueWrite()
{
    Device device;
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.isLive());
    device.server.unplug();
    // Accepted only in the moment before the loss shows; then it must not come out later.
    const Result written = device.level->WriteValue(1000);
    QTRY_VERIFY(device.isLost());
    QVERIFY(written || written == Result::NotConnected);
    device.server.plug();
    QTRY_VERIFY(device.isLive());
    const int before = device.server.requests;
    QTRY_VERIFY(device.server.requests > before + 3);
    QCOMPARE(int(device.server.words[0]), 42);
}

void TestModbusDriver::misconfigured_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("outside the group") << "offset"
                                       << "20"
                                       << "outside the group of 20";
    QTest::newRow("half outside") << "offset"
                                  << "19"
                                  << "outside the group";
    QTest::newRow("scale 0") << "scale"
                             << "0"
                             << "scale";
}

void TestModbusDriver::misconfigured()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QString, complaint);
    Device device;
    BasicSignal *wrong = device.addSignal(device.group, "wrong", {{"dataType", "float32"}});
    Device::set(wrong, {{key.toUtf8(), value.toUtf8()}});
    QVERIFY(device.driver->Start().IsSuccess());
    const Result reason = wrong->GetValue().GetError();
    QCOMPARE(reason.GetType(), Result::InvalidArgument);
    QVERIFY2(QString::fromStdString(reason.GetDetail()).contains(complaint),
             reason.GetDetail().c_str());
    QTRY_VERIFY(device.isLive());
    QVERIFY(!wrong->GetValue().IsGood());
    QCOMPARE(wrong->WriteValue(1).GetType(), Result::NotConnected);
}

void TestModbusDriver::unusableSettings()
{
    Device device;
    Device::set(device.driver, {{"port", "seven"}});
    const Result started = device.driver->Start();
    QCOMPARE(started.GetType(), Result::InvalidArgument);
    QVERIFY(started.GetDetail().find("seven") != std::string::npos);
    QCOMPARE(device.level->GetValue().GetError().GetType(), Result::InvalidArgument);

    Device::set(device.driver, {{"enabled", "false"}});
    QVERIFY(device.driver->Start().IsSuccess());
    QCOMPARE(device.level->GetValue().GetError().GetType(), Result::NotAvailable);
}

void TestModbusDriver::stopsPromptly()
{
    Device device;
    device.server.fault = ModbusTestServer::Silent;
    Device::set(device.driver, {{"timeout", "60000"}});
    QVERIFY(device.driver->Start().IsSuccess());
    QTRY_VERIFY(device.server.requests > 0);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(device.driver->Stop().IsSuccess());
    QVERIFY(clock.elapsed() < 30000); // far below the time-out, whatever the machine's load
}

QTEST_GUILESS_MAIN(TestModbusDriver)
#include "tst_modbus_driver.moc"
