#include "nodes/drivers/ModbusTestServer.h"
#include "nodes/drivers/modbus/ModbusProbe.h"
#include "support/Rows.h"

#include <QElapsedTimer>

using namespace Nodes;

namespace {

ProbePoint at(int address, ModbusType type = ModbusType::UInt16, double scale = 1)
{
    ProbePoint point;
    point.start = address;
    point.point.type = type;
    point.point.scale = scale;
    return point;
}

/// What a trial reports, gathered from its thread.
struct Rounds
{
    void start(int port, const std::vector<ProbePoint> &points, int period = 0, int timeout = 200)
    {
        probe.Start({"127.0.0.1", std::to_string(port), 1, timeout}, points, period,
                    [this](const ProbeOutcome &outcome) {
                        const std::lock_guard lock(mutex);
                        last = outcome;
                        ++count;
                    });
    }
    ProbeOutcome outcome()
    {
        const std::lock_guard lock(mutex);
        return last;
    }

    std::mutex mutex;
    ProbeOutcome last;
    std::atomic<int> count{0};
    ModbusProbe probe; // the last: its thread uses the others
};

} // namespace

class ModbusProbeTest : public QObject
{
    Q_OBJECT

private slots:
    void readsNeighboursAtOnce()
    {
        ModbusTestServer server;
        server.words[5] = 100;
        server.words[6] = 0x4148; // 12.5
        server.words[20] = 7;
        Rounds rounds;
        rounds.start(server.port(),
                     {at(20), at(6, ModbusType::Float32, 2), at(5, ModbusType::Int16, 0.1)});
        QTRY_COMPARE(rounds.count, 1);
        const ProbeOutcome outcome = rounds.outcome();
        QVERIFY(outcome.connection);
        QCOMPARE(outcome.requests, 2);
        QCOMPARE(int(server.requests), 2);
        QCOMPARE(outcome.readings[0].scaled.ToDouble(), 7.);
        QCOMPARE(outcome.readings[1].raw.ToDouble(), 12.5);
        QCOMPARE(outcome.readings[1].scaled.ToDouble(), 25.);
        QCOMPARE(outcome.readings[1].words, (std::vector<std::uint16_t>{0x4148, 0}));
        QCOMPARE(outcome.readings[2].raw.ToDouble(), 100.);
        QCOMPARE(outcome.readings[2].scaled.ToDouble(), 10.);
        QCOMPARE(int(server.lastWriteFunction), 0);
    }

    void eachPointHasItsOwnAnswer()
    {
        ModbusTestServer server;
        server.refusedFrom = 12; // address 12 does not exist
        Rounds rounds;
        rounds.start(server.port(), {at(10), at(11), at(12), at(-1), at(65535, ModbusType::Int32)});
        QTRY_COMPARE(rounds.count, 1);
        const auto readings = rounds.outcome().readings;
        QVERIFY(readings[0].result && readings[1].result);
        QVERIFY(readings[2].result == Result::DeviceError);
        QVERIFY(readings[3].result == Result::InvalidArgument);
        QVERIFY(readings[4].result == Result::InvalidArgument);
    }

    void troubleIsExplained_data()
    {
        const Rows<int, int, QString> row("fault", "type", "explained");
        row("no answer", ModbusTestServer::Silent, Result::Timeout, "ответа нет");
        row("short answer", ModbusTestServer::Truncated, Result::Timeout, "ответа нет");
        row("another protocol", ModbusTestServer::Garbage, Result::ParseError, "Modbus TCP");
        row("hangs up", ModbusTestServer::HangUp, Result::NotConnected, "оборвало");
    }
    void troubleIsExplained()
    {
        QFETCH(int, fault);
        QFETCH(int, type);
        QFETCH(QString, explained);
        ModbusTestServer server;
        server.fault = fault;
        Rounds rounds;
        rounds.start(server.port(), {at(1), at(40)}, 30);
        QTRY_COMPARE(rounds.count >= 1, true);
        const ProbeOutcome outcome = rounds.outcome();
        QVERIFY(outcome.connection);
        QCOMPARE(int(outcome.readings[0].result.GetType()), type);
        QVERIFY(!outcome.readings[1].result);
        const auto text = QString::fromStdString(ModbusProbe::Explain(outcome.readings[0].result));
        QVERIFY2(text.contains(explained), qPrintable(text));
        server.fault = ModbusTestServer::None; // and it comes back by itself
        QTRY_VERIFY(rounds.outcome().readings[1].result.IsSuccess());
    }

    void refusedConnectionIsExplained()
    {
        int port = 0;
        {
            ModbusTestServer server;
            port = server.port();
        }
        Rounds rounds;
        rounds.start(port, {at(1)});
        QTRY_COMPARE(rounds.count, 1);
        const ProbeOutcome outcome = rounds.outcome();
        QVERIFY(outcome.connection == Result::NotConnected);
        QVERIFY(ModbusProbe::Explain(outcome.connection).find("отказано") != std::string::npos);
        QVERIFY(outcome.readings[0].result == Result::NotAvailable);
    }

    void cancelsAtOnceAndIsSilentThen()
    {
        ModbusTestServer server;
        server.fault = ModbusTestServer::Silent;
        Rounds rounds;
        rounds.start(server.port(), {at(1)}, 10, 60000);
        QTRY_VERIFY(server.requests > 0);
        QElapsedTimer clock;
        clock.start();
        rounds.probe.Cancel();
        QVERIFY(clock.elapsed() < 30000);
        QCOMPARE(int(rounds.count), 0);
        server.fault = ModbusTestServer::None;
        rounds.start(server.port(), {at(1)}, 10);
        QTRY_VERIFY(rounds.count > 2);
    }
};

QTEST_GUILESS_MAIN(ModbusProbeTest)
#include "tst_modbus_probe.moc"
