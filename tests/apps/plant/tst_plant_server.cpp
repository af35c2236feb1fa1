#include "support/PlantClient.h"
#include "support/Rows.h"
#include "support/RunningPlant.h"

#include <QFile>
#include <QtTest>

#include <cerrno>
#include <deque>
#include <sys/socket.h>

Q_DECLARE_METATYPE(Plant::RegisterType)

using namespace Plant;

class TestPlantServer : public QObject
{
    Q_OBJECT

private slots:
    void mapHasNoGapsAndNoTwinsAndIsDocumented()
    {
        QFile page(STATION_SOURCE_DIR "/docs/plant.md");
        QVERIFY(page.open(QIODevice::ReadOnly));
        const QByteArray text = page.readAll();
        QSet<QString> names;
        QSet<QPair<int, int>> cells;
        for (const RegisterEntry &row : registerMap()) {
            names.insert(QString::fromStdString(row.name));
            for (int i = 0; i < row.width(); ++i) {
                const auto cell = qMakePair(int(row.table), row.address + i);
                QVERIFY2(!cells.contains(cell), row.name.c_str());
                cells.insert(cell);
            }
            const QByteArray last = QByteArray::number(row.address + row.width() - 1);
            const QByteArray from = row.width() == 1 ? "" : QByteArray::number(row.address) + "-";
            const QByteArray line = "| " + from + last + " | " + row.name.c_str() + " |";
            QVERIFY2(text.contains(line), line.constData());
        }
        QCOMPARE(names.size(), int(registerMap().size()));
        int total = 0;
        for (auto table : {RegisterTable::Coil, RegisterTable::DiscreteInput,
                           RegisterTable::Holding, RegisterTable::Input})
            total += tableSize(table);
        QCOMPARE(cells.size(), total);
    }

    void codecKeepsValueAndWordOrder_data()
    {
        const Rows<RegisterType, double, double, double, int, int> row(
            "type", "scale", "value", "decoded", "first", "second");
        row("negative", RegisterType::Int16, 0.1, -12.3, -12.3, 0xff85, 0);
        row("saturated", RegisterType::Int16, 0.1, 1e6, 3276.7, 0x7fff, 0);
        row("unsigned never wraps", RegisterType::UInt16, 1.0, -5.0, 0.0, 0, 0);
        row("counter high first", RegisterType::UInt32Abcd, 1.0, 65538, 65538, 1, 2);
        row("counter low first", RegisterType::UInt32Cdab, 1.0, 65538, 65538, 2, 1);
        row("float high first", RegisterType::Float32Abcd, 1.0, 1.5, 1.5, 0x3fc0, 0);
        row("float low first", RegisterType::Float32Cdab, 1.0, 1.5, 1.5, 0, 0x3fc0);
    }

    void codecKeepsValueAndWordOrder()
    {
        QFETCH(RegisterType, type);
        QFETCH(double, scale);
        QFETCH(double, value);
        RegisterEntry entry{};
        entry.type = type;
        entry.scale = scale;
        std::uint16_t words[2] = {};
        encode(entry, value, words);
        QTEST(int(words[0]), "first");
        QTEST(int(words[1]), "second");
        QTEST(decode(entry, words), "decoded");
    }

    void commandsActThroughTheProcess()
    {
        const RunningPlant plant(500.0);
        const PlantClient client(plant.server.port());
        QCOMPARE(client.read("K1.Flow"), 0.0);
        for (const char *coil : {"K1.Pump1.Start", "Net.Pump1.Start", "K1.Burner.Start"})
            QVERIFY(client.write(coil, 1));
        QTRY_VERIFY(client.read("K1.Flow") > 90.0);
        QTRY_VERIFY(client.read("K1.Temp.Outlet") > 60.0);
        QTRY_VERIFY(client.read("Net.Energy") > 50.0);
        QTRY_VERIFY(client.read("K1.Gas.Flow") > 100.0);
        QVERIFY(client.write("K1.Sim.FlameLoss", 1));
        QTRY_COMPARE(client.read("K1.Trip.FlameLoss"), 1.0);
        QTRY_COMPARE(client.read("K1.Burner.Start"), 0.0);
        QVERIFY(client.write("K1.Reset", 1));
        QTRY_COMPARE(client.read("K1.Tripped"), 0.0);
    }

    void setpointsReadBackForEveryClient_data()
    {
        const Rows<double> row("value");
        row("K2.Temp.Setpoint", 87.3);
        row("Sim.OutsideTemp", -31.5);
        row("Net.Flow.Setpoint", 123.5);        // float, high word first
        row("MakeUp.Pressure.Setpoint", 0.375); // float, low word first
    }

    void setpointsReadBackForEveryClient()
    {
        QFETCH(double, value);
        const char *name = QTest::currentDataTag();
        const RunningPlant plant;
        std::deque<PlantClient> clients;
        for (int i = 0; i < 20; ++i)
            clients.emplace_back(plant.server.port());
        QVERIFY(std::abs(clients.front().read(name) - value) > 0.01);
        QVERIFY(clients.front().write(name, value));
        for (const PlantClient &client : clients)
            QCOMPARE(client.read(name), value);
    }

    void refusesWithException_data()
    {
        const Rows<QByteArray, int> row("pdu", "code");
        row("unknown function", "63", 1);
        row("read beyond the coils", "0100190001", 2);
        row("read across the end", "0400370002", 2);
        row("write beyond the holdings", "0600150001", 2);
        row("read nothing", "0300000000", 3);
        row("read too much", "030000ffff", 3);
        row("short read", "030000", 3);
        row("byte count too small", "1000000002020000", 3);
        row("byte count without bytes", "1000000002 04", 3);
        row("coil neither on nor off", "0500001234", 3);
        row("set-point too high", "0600007fff", 3);
        row("set-point too low", "0600000000", 3);
        row("half a float", "06000c4348", 3);
        row("float that is no number", "10000c0002047fc00000", 3);
        row("masked out of range", "160000000004b0", 3);
        row("read and write, cut", "17000000010000000a14", 3);
    }

    void refusesWithException()
    {
        QFETCH(QByteArray, pdu);
        const RunningPlant plant;
        const PlantClient client(plant.server.port());
        const QByteArray request = QByteArray::fromHex("01" + pdu);
        std::uint8_t answer[MODBUS_TCP_MAX_ADU_LENGTH];
        QVERIFY(modbus_send_raw_request(client.raw(),
                                        reinterpret_cast<const std::uint8_t *>(request.data()),
                                        request.size()) > 0);
        QCOMPARE(modbus_receive_confirmation(client.raw(), answer), 9);
        QCOMPARE(int(answer[7]), int(quint8(request[1])) | 0x80);
        QTEST(int(answer[8]), "code");
        QCOMPARE(client.read("K1.Temp.Setpoint"), 95.0);
        QCOMPARE(client.read("Net.Flow.Setpoint"), 180.0);
    }

    void survivesHostileBytes_data()
    {
        const Rows<QByteArray, bool> row("bytes", "dropped");
        row("no protocol", QByteArray("GET / HTTP/1.0\r\n\r\n"), true);
        row("length 0", QByteArray::fromHex("00010000000001"), true);
        row("length 65535", QByteArray::fromHex("00010000ffff0103"), true);
        row("flood", QByteArray(1 << 20, '\xff'), true);
        row("half a frame", QByteArray::fromHex("000100000006010300"), false);
    }

    void survivesHostileBytes()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(bool, dropped);
        const RunningPlant plant;
        const PlantClient hostile(plant.server.port());
        const int socket = modbus_get_socket(hostile.raw());
        QVERIFY(::send(socket, bytes.data(), std::size_t(bytes.size()), MSG_NOSIGNAL) > 0);
        const auto isHungUp = [socket] {
            char byte = 0;
            const auto count = ::recv(socket, &byte, 1, MSG_DONTWAIT);
            return count == 0 || (count < 0 && errno == ECONNRESET);
        };
        if (dropped)
            QTRY_VERIFY(isHungUp());
        QCOMPARE(PlantClient(plant.server.port()).read("K1.Temp.Setpoint"), 95.0);
    }

    void lineFaultHarmsAnswers_data()
    {
        const Rows<int, bool> row("kind", "answered");
        row("late", int(LineFaultKind::Late), true);
        row("garbage", int(LineFaultKind::Garbage), false);
        row("truncate", int(LineFaultKind::Truncate), false);
        row("silent", int(LineFaultKind::Silent), false);
    }

    void lineFaultHarmsAnswers()
    {
        QFETCH(int, kind);
        const RunningPlant plant;
        const PlantClient client(plant.server.port());
        QVERIFY(client.write("Line.Delay", 300));
        QVERIFY(client.write("Line.Fault", kind));
        QElapsedTimer timer;
        timer.start();
        const bool answered = client.read("K1.Temp.Setpoint") == 95.0;
        QTEST(answered, "answered");
        QVERIFY(!answered || timer.elapsed() >= 290);
        // Requests are carried out although their answers are harmed.
        PlantClient(plant.server.port()).write("Line.Fault", 0);
        const PlantClient after(plant.server.port());
        QTRY_COMPARE(after.read("Line.Fault"), 0.0);
    }

    void badAddressIsReported()
    {
        PlantSite site;
        const auto error = [&site](const char *host, int port) {
            return QString::fromStdString(PlantServer(site, {host, port}).listen());
        };
        QVERIFY(error("no.such.place", 0).contains("no.such.place"));
        QVERIFY(error("127.0.0.1", 65536).contains("65536"));
    }
};

QTEST_GUILESS_MAIN(TestPlantServer)
#include "tst_plant_server.moc"
