#include "nodes/ProjectFixture.h"
#include "nodes/drivers/ModbusTestServer.h"
#include "nodes/drivers/modbus/ModbusPoller.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/model/services/JournalSink.h"
#include "nodes/model/services/ModelServices.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QElapsedTimer>
#include <QtTest>

#include <algorithm>
#include <mutex>
#include <vector>

using namespace Nodes;

namespace {

/// A project with one device that polls the test server.
struct Device : ProjectFixture
{
    Device() { server.words[0] = 42; }
    ~Device() { driver->Stop(); }

    void startLive() const
    {
        QVERIFY(driver->Start().IsSuccess());
        QTRY_VERIFY(isLive());
    }
    BasicSignal *addSignal(ConfigNode *parent, const char *name, const Properties &properties)
    {
        auto *signal = add<BasicSignal>("modbusSignal", parent, name,
                                        {{"writable", "true"}, {"maximum", "0"}});
        set(signal, properties);
        return signal;
    }
    bool isLive() const { return status->GetValue().ToBool() && level->GetValue().IsGood(); }
    bool isLost() const
    {
        const SignalValue link = status->GetValue();
        return link.IsGood() && !link.ToBool() && level->GetValue().GetQuality() == Quality::Bad;
    }

    ModbusTestServer server;
    ConfigNode *driver = add("modbusDriver", root(), "device",
                             {{"port", std::to_string(server.port())},
                              {"timeout", "200"},
                              {"reconnectMin", "10"},
                              {"reconnectMax", "50"}});
    ConfigNode *group = add("modbusGroup", driver, "group",
                            {{"table", "holding"}, {"count", "20"}, {"period", "20"}});
    BasicSignal *level = addSignal(group, "level", {{"dataType", "int16"}});
    BasicSignal *status = add<BasicSignal>("driverStatus", driver, "link", {{"type", "bool"}});
};

} // namespace

class TestModbusDriver : public QObject
{
    Q_OBJECT

private slots:
    void pollsAndStops()
    {
        Device device;
        device.startLive();
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
        device.startLive();
    }

    void losesAndRecovers_data()
    {
        const Rows<int> row("fault");
        row("silent", ModbusTestServer::Silent);
        row("late", ModbusTestServer::Late);
        row("garbage", ModbusTestServer::Garbage);
        row("answer to another request", ModbusTestServer::OtherTransaction);
        row("truncated", ModbusTestServer::Truncated);
        row("hangs up", ModbusTestServer::HangUp);
    }

    void losesAndRecovers()
    {
        QFETCH(int, fault);
        Device device;
        device.startLive();

        device.server.lateMs = 400;
        device.server.fault = fault;
        device.server.words[0] = 7;
        QTRY_VERIFY(device.isLost());
        // The last value is kept for the record, marked.
        QVERIFY(device.level->GetValue().ToDouble() == 42 ||
                device.level->GetValue().ToDouble() == 7);
        QCOMPARE(device.level->WriteValue(1).GetType(), Result::NotConnected);

        device.server.fault = ModbusTestServer::None;
        QTRY_VERIFY(device.isLive());
        QCOMPARE(device.level->GetValue().ToDouble(), 7.);
    }

    // By its name alone nothing of it is found again.
    void journalKnowsWhoItIsAbout()
    {
        struct Journal : JournalSink
        {
            Result Append(BasicEvent event) override
            {
                const std::lock_guard lock(mutex);
                events.push_back(std::move(event));
                return Result();
            }
            std::mutex mutex;
            std::vector<BasicEvent> events;
        } journal;
        Device device;
        ModelServices services;
        services.journal = &journal;
        device.project.SetServices(services);
        device.startLive();
        device.driver->Stop();
        device.project.SetServices({});
        const std::lock_guard lock(journal.mutex);
        const auto connected =
            std::find_if(journal.events.begin(), journal.events.end(), [](const BasicEvent &event) {
                return event.text.find("установлена") != std::string::npos;
            });
        QVERIFY(connected != journal.events.end());
        QCOMPARE(connected->source, device.driver->GetPath());
        QCOMPARE(connected->sourceNode.GetNodeId(), device.driver->GetId());
    }

    void exceptionConcernsOneGroup()
    {
        Device device;
        ConfigNode *far = device.add("modbusGroup", device.driver, "far",
                                     {{"start", "50"}, {"count", "2"}, {"period", "20"}});
        BasicSignal *lonely = device.addSignal(far, "lonely", {});
        device.server.refusedFrom = 50;
        QVERIFY(device.driver->Start().IsSuccess());
        QTRY_COMPARE(lonely->GetValue().GetError().GetType(), Result::DeviceError);
        QVERIFY(lonely->GetValue().GetError().GetDetail().find("address") != std::string::npos);
        QTRY_VERIFY(device.isLive());

        device.server.refusedFrom = ModbusTestServer::size;
        QTRY_VERIFY(lonely->GetValue().IsGood());
    }

    void silenceOfOneGroup_data()
    {
        const Rows<bool, bool> row("isFirst", "isSilentAtStart");
        row("first, later", true, false);
        row("last, later", false, false);
        row("first, from the start", true, true);
    }

    void silenceOfOneGroup()
    {
        QFETCH(bool, isFirst);
        QFETCH(bool, isSilentAtStart);
        Device device;
        ProjectFixture::set(device.driver, {{"timeout", "50"}});
        ConfigNode *far = device.add("modbusGroup", device.driver, "far",
                                     {{"start", "50"}, {"count", "2"}, {"period", "20"}});
        const BasicSignal *other = device.addSignal(far, "other", {});
        const BasicSignal *silent = isFirst ? device.level : other;
        const BasicSignal *live = isFirst ? other : device.level;
        const int silentAt = isFirst ? 0 : 50;
        device.server.silentAt = isSilentAtStart ? silentAt : -1;
        QVERIFY(device.driver->Start().IsSuccess());
        QTRY_VERIFY(live->GetValue().IsGood());
        std::atomic<int> losses{0};
        const Nodes::ScopedConnection watch = live->GetCell()->Subscribe(
            [&losses](const SignalValue &value) { losses += !value.IsGood(); });
        device.server.silentAt = silentAt;
        QTRY_VERIFY(silent->GetValue().GetQuality() == Quality::Bad);
        const int before = device.server.requests;
        QTRY_VERIFY(device.server.requests > before + 20);
        QVERIFY(live->GetValue().IsGood() && device.status->GetValue().ToBool());
        QVERIFY(!silent->GetValue().IsGood());
        QCOMPARE(losses.load(), 0);

        device.server.silentAt = -1;
        QTRY_VERIFY(silent->GetValue().IsGood());
    }

    void nestedDriverKeepsItsOwn()
    {
        Device device;
        ConfigNode *inner = device.add("modbusDriver", device.add("folder", device.group));
        ConfigNode *innerGroup = device.add("modbusGroup", inner, "inner", {{"count", "100"}});
        const BasicSignal *beyond = device.addSignal(innerGroup, "beyond", {{"offset", "99"}});
        const BasicSignal *astray = device.addSignal(inner, "astray", {});
        auto *memory = device.add<BasicSignal>("memorySignal", device.group, "memory");
        memory->GetCell()->Publish(1.);
        QVERIFY(!inner->isValid().empty());
        device.startLive();
        QVERIFY(device.driver->Stop().IsSuccess());
        QVERIFY(beyond->GetValue().IsEmpty() && astray->GetValue().IsEmpty());
        // No driver gives it, so none takes it away.
        QVERIFY(memory->GetValue().IsGood());
    }

    void writes_data()
    {
        // word: of the first register afterwards; 0x00f0 before
        const Rows<std::string, std::string, bool, std::string, int, int> row(
            "table", "dataType", "isMultiple", "value", "function", "word");

        row("coil", "coils", "bool", false, "1", 5, 0xf0);
        row("coil by the function for many", "coils", "bool", true, "1", 15, 0xf0);
        row("register", "holding", "int16", false, "-3", 6, 0xfffd);
        row("register by the function for many", "holding", "uint16", true, "513", 16, 0x0201);
        row("float", "holding", "float32", false, "-1.5", 16, 0xbfc0);
        row("bit set", "holding", "bit", false, "1", 6, 0x00f8);
        row("logical register", "holding", "bool", false, "0", 6, 0);
    }

    void writes()
    {
        QFETCH(std::string, table);
        QFETCH(std::string, dataType);
        QFETCH(bool, isMultiple);
        QFETCH(std::string, value);
        Device device;
        // Polled once an hour: what the signal shows comes from the read-back.
        ConfigNode *group = device.add("modbusGroup", device.driver, "target",
                                       {{"start", "30"}, {"count", "4"}, {"period", "3600000"}});
        Device::set(group, {{"table", table}, {"writeMultiple", isMultiple ? "true" : "false"}});
        BasicSignal *signal =
            device.addSignal(group, "target", {{"dataType", dataType}, {"bit", "3"}});
        device.server.words[30] = 0x00f0;
        QVERIFY(device.driver->Start().IsSuccess());
        QTRY_VERIFY(signal->GetValue().IsGood());

        QVERIFY(signal->WriteValue(value).IsSuccess());
        QTRY_COMPARE(signal->GetValue().ToDouble(), std::stod(value));
        QTEST(int(device.server.lastWriteFunction), "function");
        QTEST(int(device.server.words[30]), "word");
        QCOMPARE(bool(device.server.bits[30]), table == "coils");
    }

    void failedWriteShowsTheDevicesValue()
    {
        Device device;
        device.server.refusesWrites = true;
        device.startLive();
        QVERIFY(device.level->WriteValue(5).IsSuccess());
        const int before = device.server.requests;
        QTRY_VERIFY(device.server.requests > before + 2);
        QVERIFY(device.isLive());
        QCOMPARE(device.level->GetValue().ToDouble(), 42.);
        QCOMPARE(device.level->WriteValue(40000).GetType(), Result::OutOfRange);
    }

    void neverSendsAnOverdueWrite()
    {
        Device device;
        device.server.unplug();
        QVERIFY(device.driver->Start().IsSuccess());
        QTRY_VERIFY(device.isLost());
        QCOMPARE(device.level->GetValue().GetError().GetType(), Result::NotConnected);
        device.server.plug();
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

    void acceptedWritesAreSentOrJournalled_data()
    {
        const Rows<int, int> row("fault", "sent");
        row("slow", ModbusTestServer::Late, 3);
        row("silent", ModbusTestServer::Silent, 0);
    }

    void acceptedWritesAreSentOrJournalled()
    {
        QFETCH(int, fault);
        ModbusTestServer server;
        ModbusSettings settings;
        settings.host = "127.0.0.1";
        settings.port = std::to_string(server.port());
        settings.timeout = 60000;
        PolledGroup group;
        group.count = 10;
        std::atomic<bool> isConnected{false};
        std::vector<std::string> unsent; // read once the poller's thread is gone
        ModbusPoller poller(settings, {group},
                            {[&](EventLevel, const std::string &text, const std::string &path) {
                                 if (text.find("Запись") == 0)
                                     unsent.push_back(path);
                             },
                             [&](bool is) { isConnected = is; }});
        poller.Start();
        QTRY_VERIFY(isConnected);
        server.lateMs = 40;
        server.fault = fault;
        for (int i = 0; i < 3; ++i)
            QVERIFY(poller.QueueWrite({0, i, {{std::uint16_t(i + 1)}, 1}, std::to_string(i)}));
        poller.Stop();
        QTEST(int(3 - unsent.size()), "sent");
        QCOMPARE(int(server.words[2]), fault == ModbusTestServer::Silent ? 0 : 3);
        QVERIFY(!poller.QueueWrite({0, 0, {{9}, 1}, "late"}));
    }

    void misconfigured_data()
    {
        const Rows<std::string, std::string, std::string> row("key", "value", "complaint");
        row("outside the group", "offset", "20", "outside the group of 20");
        row("half outside", "offset", "19", "outside the group");
        row("scale 0", "scale", "0", "scale");
    }

    void misconfigured()
    {
        QFETCH(std::string, key);
        QFETCH(std::string, value);
        QFETCH(std::string, complaint);
        Device device;
        BasicSignal *wrong = device.addSignal(device.group, "wrong", {{"dataType", "float32"}});
        Device::set(wrong, {{key.c_str(), value}});
        QVERIFY(device.driver->Start().IsSuccess());
        const Result reason = wrong->GetValue().GetError();
        QCOMPARE(reason.GetType(), Result::InvalidArgument);
        QVERIFY2(reason.GetDetail().find(complaint) != std::string::npos,
                 reason.GetDetail().c_str());
        QTRY_VERIFY(device.isLive());
        QVERIFY(!wrong->GetValue().IsGood());
        QCOMPARE(wrong->WriteValue(1).GetType(), Result::NotConnected);
    }

    void unusableSettings()
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

    void stopsPromptly()
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
};

QTEST_GUILESS_MAIN(TestModbusDriver)
#include "tst_modbus_driver.moc"
