#include "nodes/drivers/modbus/ModbusPoints.h"
#include "support/Rows.h"

#include <QtTest>

#include <cmath>

using namespace Nodes;

Q_DECLARE_METATYPE(ModbusPoint)
Q_DECLARE_METATYPE(ModbusTable)

namespace {

using Type = ModbusType;
using Order = ModbusByteOrder;
using Words = QVector<quint16>;

ModbusPoint pointOf(Type type, Order order = Order::ABCD, double scale = 1, double added = 0)
{
    ModbusPoint point;
    point.type = type;
    point.order = order;
    point.scale = scale;
    point.offsetValue = added;
    return point;
}

ModbusPoint bitOf(int bit, Order order = Order::ABCD)
{
    ModbusPoint point = pointOf(Type::Bit, order);
    point.bit = bit;
    return point;
}

} // namespace

class TestModbusPoints : public QObject
{
    Q_OBJECT

private slots:
    void wordsAndValues_data()
    {
        const Rows<ModbusPoint, Words, double> row("point", "words", "value");

        row("int16 lowest", pointOf(Type::Int16), Words{0x8000}, -32768.);
        row("int16 highest", pointOf(Type::Int16), Words{0x7fff}, 32767.);
        row("int16 -2, bytes exchanged", pointOf(Type::Int16, Order::BADC), Words{0xfeff}, -2.);
        row("int16 words exchanged is the same", pointOf(Type::Int16, Order::CDAB), Words{0x1234},
            4660.);
        row("uint16 highest", pointOf(Type::UInt16), Words{0xffff}, 65535.);
        row("int32 lowest", pointOf(Type::Int32), Words{0x8000, 0}, -2147483648.);
        row("int32 -1", pointOf(Type::Int32), Words{0xffff, 0xffff}, -1.);
        row("uint32 highest", pointOf(Type::UInt32), Words{0xffff, 0xffff}, 4294967295.);
        row("ABCD", pointOf(Type::UInt32), Words{0x0102, 0x0304}, 16909060.);
        row("CDAB", pointOf(Type::UInt32, Order::CDAB), Words{0x0304, 0x0102}, 16909060.);
        row("BADC", pointOf(Type::UInt32, Order::BADC), Words{0x0201, 0x0403}, 16909060.);
        row("DCBA", pointOf(Type::UInt32, Order::DCBA), Words{0x0403, 0x0201}, 16909060.);
        row("float32", pointOf(Type::Float32), Words{0x42f6, 0xe979}, double(123.456f));
        row("float32 DCBA", pointOf(Type::Float32, Order::DCBA), Words{0x79e9, 0xf642},
            double(123.456f));
        row("float32 highest", pointOf(Type::Float32), Words{0x7f7f, 0xffff},
            3.4028234663852886e38);
        row("scale and added value", pointOf(Type::Int16, Order::ABCD, 0.1, -40), Words{0x00fa},
            -15.);
        row("negative scale", pointOf(Type::Int16, Order::ABCD, -2, 0), Words{0x0003}, -6.);
    }

    void wordsAndValues()
    {
        QFETCH(ModbusPoint, point);
        QFETCH(Words, words);
        QFETCH(double, value);
        point.offset = 1;
        std::vector<std::uint16_t> data{0xdead};
        data.insert(data.end(), words.begin(), words.end());
        QCOMPARE(ModbusPoints::Decode(point, data).ToDouble(), value);
        data.pop_back();
        QVERIFY(ModbusPoints::Decode(point, data).IsError());

        ModbusWords encoded;
        const Result result = ModbusPoints::Encode(point, value, encoded);
        QVERIFY2(result.IsSuccess(), result.ToString().c_str());
        QCOMPARE(encoded.count, words.size());
        for (int i = 0; i < words.size(); ++i)
            QCOMPARE(encoded.words[i], words[i]);
    }

    void bits()
    {
        for (int bit = 0; bit < 16; ++bit) {
            const std::uint16_t word(1u << bit);
            QVERIFY(ModbusPoints::Decode(bitOf(bit), {word}).ToBool());
            QVERIFY(!ModbusPoints::Decode(bitOf(bit), {std::uint16_t(~word)}).ToBool());
            ModbusWords encoded;
            QVERIFY(ModbusPoints::Encode(bitOf(bit), true, encoded).IsSuccess());
            QCOMPARE(encoded.mask, word);
            QCOMPARE(encoded.words[0], word);
            QVERIFY(ModbusPoints::Encode(bitOf(bit), "false", encoded).IsSuccess());
            QCOMPARE(encoded.words[0], std::uint16_t(0));
        }
        QVERIFY(ModbusPoints::Decode(bitOf(0, Order::BADC), {0x0100}).ToBool());
    }

    void decodesNoNumber()
    {
        for (const std::uint16_t high : {0x7fc0, 0x7f80, 0xff80}) { // NaN, infinite both ways
            const SignalValue value = ModbusPoints::Decode(pointOf(Type::Float32), {high, 0});
            QCOMPARE(value.GetError().GetType(), Result::DeviceError);
            QVERIFY(!value.IsGood());
        }
    }

    void refusesToEncode_data()
    {
        const Rows<ModbusPoint, QString, int> row("point", "value", "error");

        row("int16 above", pointOf(Type::Int16), "32768", Result::OutOfRange);
        row("int16 below", pointOf(Type::Int16), "-32769", Result::OutOfRange);
        row("uint16 negative", pointOf(Type::UInt16), "-1", Result::OutOfRange);
        row("scaled above", pointOf(Type::UInt16, Order::ABCD, 0.1), "6553.6", Result::OutOfRange);
        row("int32 above", pointOf(Type::Int32), "2147483648", Result::OutOfRange);
        row("uint32 above", pointOf(Type::UInt32), "4294967296", Result::OutOfRange);
        row("float32 above", pointOf(Type::Float32), "3.5e38", Result::OutOfRange);
        row("infinite", pointOf(Type::Float32), "inf", Result::OutOfRange);
        row("no number", pointOf(Type::Int16), "open", Result::WrongType);
        row("no logical value", bitOf(3), "open", Result::WrongType);
        ModbusPoint readOnly = pointOf(Type::Int16);
        readOnly.table = ModbusTable::Input;
        row("input register", readOnly, "1", Result::ReadOnly);
    }

    void refusesToEncode()
    {
        QFETCH(ModbusPoint, point);
        QFETCH(QString, value);
        ModbusWords words;
        const Result result = ModbusPoints::Encode(point, value.toStdString(), words);
        QTEST(int(result.GetType()), "error");
        QVERIFY(!result.GetDetail().empty());
    }

    void checksPlaces_data()
    {
        const Rows<ModbusTable, ModbusPoint, int, bool> row("table", "point", "offset", "fits");
        const auto holding = ModbusTable::Holding;
        row("last register", holding, pointOf(Type::Int16), 9, true);
        row("behind the last", holding, pointOf(Type::Int16), 10, false);
        row("half behind the last", holding, pointOf(Type::Float32), 9, false);
        row("before the first", holding, pointOf(Type::Int16), -1, false);
        row("number in coils", ModbusTable::Coils, pointOf(Type::Int16), 0, false);
        row("logical value in coils", ModbusTable::Coils, pointOf(Type::Bool), 9, true);
        row("bit 16", holding, bitOf(16), 0, false);
        row("scale 0", holding, pointOf(Type::Int16, Order::ABCD, 0), 0, false);
        row("scale no number", holding, pointOf(Type::Int16, Order::ABCD, std::nan("")), 0, false);
        row("unknown type", holding, pointOf(Type(7)), 0, false);
    }

    void checksPlaces()
    {
        QFETCH(ModbusTable, table);
        QFETCH(ModbusPoint, point);
        QFETCH(int, offset);
        QFETCH(bool, fits);
        point.table = table;
        point.offset = offset;
        const Result result = point.Check(10);
        QCOMPARE(result.IsSuccess(), fits);
        QCOMPARE(result.GetDetail().empty(), fits);
    }
};

QTEST_APPLESS_MAIN(TestModbusPoints)
#include "tst_modbus_points.moc"
