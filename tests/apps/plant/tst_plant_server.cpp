#include "apps/plant/PlantServer.h"
#include "apps/plant/RegisterMap.h"

#include <QFile>
#include <QtTest>

#include <modbus.h>

#include <atomic>
#include <cerrno>
#include <cmath>
#include <memory>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

using namespace Plant;

namespace {
/// A server on a free loopback port, served from its own thread.
struct RunningPlant
{
    explicit RunningPlant(double timeFactor = 100.0)
        : server(site, options(timeFactor)), error(server.listen())
    {
        if (error.empty())
            thread = std::thread([this] { server.run(stop); });
    }
    ~RunningPlant()
    {
        stop = true;
        if (thread.joinable())
            thread.join();
    }
    static ServerOptions options(double timeFactor)
    {
        ServerOptions made;
        made.timeFactor = timeFactor;
        return made;
    }

    PlantSite site;
    PlantServer server;
    std::string error;
    std::atomic<bool> stop{false};
    std::thread thread;
};

/// A Modbus client that reads and writes rows of the map by name, in engineering units.
class Client
{
public:
    explicit Client(const RunningPlant &plant)
        : m_context(modbus_new_tcp("127.0.0.1", plant.server.port()), &modbus_free)
    {
        modbus_set_response_timeout(m_context.get(), 1, 0);
        m_connected = modbus_connect(m_context.get()) == 0;
    }
    ~Client() { modbus_close(m_context.get()); }

    bool isConnected() const { return m_connected; }
    modbus_t *raw() { return m_context.get(); }

    double read(const char *name)
    {
        const RegisterEntry &row = *findRegister(name);
        std::uint16_t words[2] = {};
        std::uint8_t bit = 0;
        int count = -1;
        if (row.table == RegisterTable::Coil)
            count = modbus_read_bits(raw(), row.address, 1, &bit);
        else if (row.table == RegisterTable::DiscreteInput)
            count = modbus_read_input_bits(raw(), row.address, 1, &bit);
        else if (row.table == RegisterTable::Holding)
            count = modbus_read_registers(raw(), row.address, row.width(), words);
        else
            count = modbus_read_input_registers(raw(), row.address, row.width(), words);
        if (count != row.width())
            return std::nan("");
        return row.type == RegisterType::Bit ? bit : decode(row, words);
    }

    bool write(const char *name, double value)
    {
        const RegisterEntry &row = *findRegister(name);
        if (row.table == RegisterTable::Coil)
            return modbus_write_bit(raw(), row.address, value != 0.0) == 1;
        std::uint16_t words[2] = {};
        encode(row, value, words);
        if (row.width() == 1)
            return modbus_write_register(raw(), row.address, words[0]) == 1;
        return modbus_write_registers(raw(), row.address, 2, words) == 2;
    }

private:
    std::unique_ptr<modbus_t, void (*)(modbus_t *)> m_context;
    bool m_connected = false;
};

/// A bare connection for bytes that no proper client would send.
class RawSocket
{
public:
    explicit RawSocket(const RunningPlant &plant) : m_socket(::socket(AF_INET, SOCK_STREAM, 0))
    {
        const timeval patience{5, 0};
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(plant.server.port()));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        m_connected =
            ::connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    }
    ~RawSocket() { ::close(m_socket); }

    bool isConnected() const { return m_connected; }
    void write(const QByteArray &bytes)
    {
        for (int sent = 0; sent < bytes.size();) {
            const auto count =
                ::send(m_socket, bytes.data() + sent, size_t(bytes.size() - sent), MSG_NOSIGNAL);
            if (count <= 0)
                return;
            sent += int(count);
        }
    }
    /// Up to @p size bytes; fewer if the server closes or keeps silent.
    QByteArray read(int size)
    {
        QByteArray bytes(size, '\0');
        const auto count = ::recv(m_socket, bytes.data(), size_t(size), MSG_WAITALL);
        bytes.truncate(count > 0 ? int(count) : 0);
        return bytes;
    }
    /// Waits until the server hangs up.
    bool isHungUp()
    {
        char byte = 0;
        const auto count = ::recv(m_socket, &byte, 1, 0);
        return count == 0 || (count < 0 && errno == ECONNRESET);
    }

private:
    int m_socket;
    bool m_connected = false;
};
} // namespace

class TestPlantServer : public QObject
{
    Q_OBJECT

private slots:
    void mapHasNoGapsAndNoTwins();
    void documentedAsItIs();
    void codecKeepsValueAndWordOrder_data();
    void codecKeepsValueAndWordOrder();
    void commandsActThroughTheProcess();
    void setpointsReadBack_data();
    void setpointsReadBack();
    void refusesWithException_data();
    void refusesWithException();
    void servesSeveralClients();
    void survivesHostileBytes_data();
    void survivesHostileBytes();
    void lineFaultHarmsAnswers_data();
    void lineFaultHarmsAnswers();
    void badAddressIsReported();
};

void TestPlantServer::mapHasNoGapsAndNoTwins()
{
    QSet<QString> names;
    QMap<QPair<int, int>, QString> cells;
    for (const RegisterEntry &row : registerMap()) {
        const QString name = QString::fromStdString(row.name);
        QVERIFY2(!names.contains(name), qPrintable(name));
        names.insert(name);
        for (int i = 0; i < row.width(); ++i) {
            const auto cell = qMakePair(int(row.table), row.address + i);
            QVERIFY2(!cells.contains(cell), qPrintable(name + " overlaps " + cells.value(cell)));
            cells.insert(cell, name);
        }
    }
    int total = 0;
    for (auto table : {RegisterTable::Coil, RegisterTable::DiscreteInput, RegisterTable::Holding,
                       RegisterTable::Input})
        total += tableSize(table);
    QCOMPARE(cells.size(), total);
}

void TestPlantServer::documentedAsItIs()
{
    QFile page(STATION_SOURCE_DIR "/docs/plant.md");
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QByteArray text = page.readAll();
    for (const RegisterEntry &row : registerMap()) {
        const QByteArray last = QByteArray::number(row.address + row.width() - 1);
        const QByteArray from = row.width() == 1 ? "" : QByteArray::number(row.address) + "-";
        const QByteArray line = "| " + from + last + " | " + row.name.c_str() + " |";
        QVERIFY2(text.contains(line), line.constData());
    }
}

void TestPlantServer::codecKeepsValueAndWordOrder_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("decoded");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    const auto row = [](const char *name, RegisterType type, double scale, double value,
                        double decoded, int first, int second) {
        QTest::newRow(name) << int(type) << scale << value << decoded << first << second;
    };
    row("negative", RegisterType::Int16, 0.1, -12.3, -12.3, 0xff85, 0);
    row("saturated", RegisterType::Int16, 0.1, 1e6, 3276.7, 0x7fff, 0);
    row("unsigned never wraps", RegisterType::UInt16, 1.0, -5.0, 0.0, 0, 0);
    row("counter high first", RegisterType::UInt32Abcd, 1.0, 65538, 65538, 1, 2);
    row("counter low first", RegisterType::UInt32Cdab, 1.0, 65538, 65538, 2, 1);
    row("float high first", RegisterType::Float32Abcd, 1.0, 1.5, 1.5, 0x3fc0, 0);
    row("float low first", RegisterType::Float32Cdab, 1.0, 1.5, 1.5, 0, 0x3fc0);
}

void TestPlantServer::codecKeepsValueAndWordOrder()
{
    QFETCH(int, type);
    QFETCH(double, scale);
    QFETCH(double, value);
    RegisterEntry entry{};
    entry.type = RegisterType(type);
    entry.scale = scale;
    std::uint16_t words[2] = {};
    encode(entry, value, words);
    QTEST(int(words[0]), "first");
    QTEST(int(words[1]), "second");
    QTEST(decode(entry, words), "decoded");
}

void TestPlantServer::commandsActThroughTheProcess()
{
    RunningPlant plant(500.0);
    Client client(plant);
    QVERIFY(client.isConnected());
    QCOMPARE(client.read("K1.Flow"), 0.0);
    for (const char *coil : {"K1.Pump1.Start", "Net.Pump1.Start", "K1.Burner.Start"})
        QVERIFY(client.write(coil, 1));
    QTRY_COMPARE(client.read("K1.Pump1.Running"), 1.0);
    QTRY_VERIFY(client.read("K1.Flow") > 90.0);
    QTRY_COMPARE(client.read("K1.Burner.Flame"), 1.0);
    QTRY_VERIFY(client.read("K1.Temp.Outlet") > 60.0);
    QTRY_VERIFY(client.read("Net.Energy") > 50.0);
    QTRY_VERIFY(client.read("K1.Gas.Flow") > 100.0);
    QVERIFY(client.write("K1.Sim.FlameLoss", 1));
    QTRY_COMPARE(client.read("K1.Trip.FlameLoss"), 1.0);
    QTRY_COMPARE(client.read("K1.Burner.Start"), 0.0);
    QVERIFY(client.write("K1.Reset", 1));
    QTRY_COMPARE(client.read("K1.Tripped"), 0.0);
}

void TestPlantServer::setpointsReadBack_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("value");
    QTest::newRow("scaled") << QByteArray("K2.Temp.Setpoint") << 87.3;
    QTest::newRow("negative") << QByteArray("Sim.OutsideTemp") << -31.5;
    QTest::newRow("float high first") << QByteArray("Net.Flow.Setpoint") << 123.5;
    QTest::newRow("float low first") << QByteArray("MakeUp.Pressure.Setpoint") << 0.375;
}

void TestPlantServer::setpointsReadBack()
{
    QFETCH(QByteArray, name);
    QFETCH(double, value);
    RunningPlant plant;
    Client client(plant);
    QVERIFY(std::abs(client.read(name) - value) > 0.01);
    QVERIFY(client.write(name, value));
    QCOMPARE(client.read(name), value);
}

void TestPlantServer::refusesWithException_data()
{
    QTest::addColumn<QByteArray>("pdu");
    QTest::addColumn<int>("code");
    const auto row = [](const char *name, const char *hex, int code) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << code;
    };
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
    row("set-point out of range", "0600007fff", 3);
    row("half a float", "06000c4348", 3);
    row("float that is no number", "10000c0002047fc00000", 3);
    row("masked out of range", "160000000004b0", 3);
    row("read and write, cut", "17000000010000000a14", 3);
}

void TestPlantServer::refusesWithException()
{
    QFETCH(QByteArray, pdu);
    RunningPlant plant;
    RawSocket socket(plant);
    QVERIFY(socket.isConnected());
    const QByteArray head = QByteArray::fromHex("beef00000000") + char(1);
    QByteArray request = head + pdu;
    request[5] = char(pdu.size() + 1);
    socket.write(request);
    const QByteArray answer = socket.read(9);
    QCOMPARE(answer.size(), 9);
    QCOMPARE(answer.left(2), head.left(2));
    QCOMPARE(int(quint8(answer[7])), int(quint8(pdu[0])) | 0x80);
    QTEST(int(answer[8]), "code");
    Client client(plant);
    QCOMPARE(client.read("K1.Temp.Setpoint"), 95.0);
    QCOMPARE(client.read("Net.Flow.Setpoint"), 180.0);
}

void TestPlantServer::servesSeveralClients()
{
    RunningPlant plant;
    std::vector<std::unique_ptr<Client>> clients;
    for (int i = 0; i < 20; ++i)
        clients.push_back(std::make_unique<Client>(plant));
    QVERIFY(clients.front()->write("K1.Valve.Setpoint", 42.0));
    for (const auto &client : clients)
        QCOMPARE(client->read("K1.Valve.Setpoint"), 42.0);
}

void TestPlantServer::survivesHostileBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("dropped");
    QTest::newRow("no protocol") << QByteArray("GET / HTTP/1.0\r\n\r\n") << true;
    QTest::newRow("length 0") << QByteArray::fromHex("00010000000001") << true;
    QTest::newRow("length 65535") << QByteArray::fromHex("00010000ffff0103") << true;
    QTest::newRow("flood") << QByteArray(1 << 20, '\xff') << true;
    QTest::newRow("half a frame") << QByteArray::fromHex("000100000006010300") << false;
}

void TestPlantServer::survivesHostileBytes()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, dropped);
    RunningPlant plant;
    RawSocket socket(plant);
    QVERIFY(socket.isConnected());
    socket.write(bytes);
    if (dropped)
        QVERIFY(socket.isHungUp());
    Client client(plant);
    QCOMPARE(client.read("K1.Temp.Setpoint"), 95.0);
}

void TestPlantServer::lineFaultHarmsAnswers_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("answered");
    QTest::newRow("late") << int(LineFaultKind::Late) << true;
    QTest::newRow("garbage") << int(LineFaultKind::Garbage) << false;
    QTest::newRow("truncate") << int(LineFaultKind::Truncate) << false;
    QTest::newRow("silent") << int(LineFaultKind::Silent) << false;
}

void TestPlantServer::lineFaultHarmsAnswers()
{
    QFETCH(int, kind);
    RunningPlant plant;
    Client client(plant);
    QVERIFY(client.write("Line.Delay", 300));
    QVERIFY(client.write("Line.Fault", kind));
    QElapsedTimer timer;
    timer.start();
    const bool answered = client.read("K1.Temp.Setpoint") == 95.0;
    QTEST(answered, "answered");
    if (answered)
        QVERIFY(timer.elapsed() >= 290);
    // Requests are carried out although their answers are harmed.
    Client repair(plant);
    repair.write("Line.Fault", 0);
    Client after(plant);
    QTRY_COMPARE(after.read("Line.Fault"), 0.0);
}

void TestPlantServer::badAddressIsReported()
{
    PlantSite site;
    ServerOptions options;
    options.host = "no.such.place";
    QVERIFY(QString::fromStdString(PlantServer(site, options).listen()).contains("no.such.place"));
    RunningPlant plant;
    QVERIFY(plant.error.empty());
    QVERIFY(plant.server.port() > 0);
    options.host = "127.0.0.1";
    options.port = 65536;
    QVERIFY(QString::fromStdString(PlantServer(site, options).listen()).contains("65536"));
}

QTEST_GUILESS_MAIN(TestPlantServer)
#include "tst_plant_server.moc"
