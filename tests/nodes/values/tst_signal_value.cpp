#include "nodes/values/NColor.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueCell.h"

#include <QtTest>

#include <cmath>
#include <limits>

using namespace Nodes;

class TestSignalValue : public QObject
{
    Q_OBJECT
private slots:
    void errorsNeverReadAsNumbers();
    void readsNumbers_data();
    void readsNumbers();
    void convertsWithoutLosing_data();
    void convertsWithoutLosing();
    void textsConvertOrFail_data();
    void textsConvertOrFail();
    void publishesNoInfinity_data();
    void publishesNoInfinity();
    void qualityFollowsTheHeldAlternative();
    void numberTextsSurviveARoundTrip_data();
    void numberTextsSurviveARoundTrip();
    void formatsFixedDecimals_data();
    void formatsFixedDecimals();
    void refusesDamagedColors_data();
    void refusesDamagedColors();
};

void TestSignalValue::errorsNeverReadAsNumbers()
{
    for (const SignalValue &value : {SignalValue(), SignalValue(Result(Result::Timeout))}) {
        QVERIFY(std::isnan(value.ToDouble()));
        QVERIFY(!value.IsNumber());
        QVERIFY(!value.ToBool());
        QCOMPARE(int(value.GetQuality()), int(Quality::Bad));
    }
    QVERIFY(SignalValue(Result(Result::Timeout)).IsError());
    QVERIFY(!SignalValue().IsError());
}

void TestSignalValue::readsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("integer");
    QTest::addColumn<bool>("isTrue");
    QTest::newRow("decimal") << "1.5" << 1.5 << 2 << false;
    QTest::newRow("one") << "1" << 1.0 << 1 << true;
    QTest::newRow("beyond int") << "3e9" << 3e9 << std::numeric_limits<int>::max() << false;
    QTest::newRow("comma is no number") << "1,5" << qQNaN() << 0 << false;
    QTest::newRow("trailing unit is no number") << "1.5 bar" << qQNaN() << 0 << false;
    QTest::newRow("empty") << "" << qQNaN() << 0 << false;
    QTest::newRow("word") << "true" << qQNaN() << 0 << true;
}

void TestSignalValue::readsNumbers()
{
    QFETCH(QString, text);
    QFETCH(double, number);
    const SignalValue value(text.toStdString());
    if (std::isnan(number))
        QVERIFY(std::isnan(value.ToDouble()));
    else
        QCOMPARE(value.ToDouble(), number);
    QTEST(value.ToInt(), "integer");
    QTEST(value.ToBool(), "isTrue");
}

void TestSignalValue::convertsWithoutLosing_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text"); // empty: does not fit
    const auto row = [](const char *name, double number, enSignalValueType type, const char *text) {
        QTest::newRow(name) << number << int(type) << text;
    };
    row("rounded", 2.5, enSignalValueType::Int, "3");
    row("lowest int", -2147483648.0, enSignalValueType::Int, "-2147483648");
    row("above int", 2147483647.5, enSignalValueType::Int, "");
    row("below int", -2147483649.0, enSignalValueType::Int, "");
    row("negative unsigned", -1, enSignalValueType::ULong, "");
    row("above unsigned", 18446744073709551616.0, enSignalValueType::ULong, "");
    row("no number", qQNaN(), enSignalValueType::Int, "");
    row("logical", 7, enSignalValueType::Bool, "true");
}

void TestSignalValue::convertsWithoutLosing()
{
    QFETCH(double, number);
    QFETCH(int, type);
    SignalValue value(number);
    value.SetQuality(Quality::Uncertain);
    value.SetTimes(11, 12);
    const SignalValue converted = value.ConvertedTo(enSignalValueType(type));
    QTEST(converted.IsError() ? QString() : QString::fromStdString(converted.ToString()), "text");
    QCOMPARE(converted.GetSourceTime(), Timestamp(11));
    QCOMPARE(converted.GetQuality(), converted.IsError() ? Quality::Bad : Quality::Uncertain);
}

void TestSignalValue::textsConvertOrFail_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text"); // empty: does not fit
    const int logical = int(enSignalValueType::Bool);
    const int real = int(enSignalValueType::Double);
    QTest::newRow("number above one is true") << "2" << logical << "true";
    QTest::newRow("written with decimals") << "0.0" << logical << "false";
    QTest::newRow("word") << "false" << logical << "false";
    QTest::newRow("other word") << "yes" << logical << "";
    QTest::newRow("infinite") << "inf" << real << "";
    QTest::newRow("not a number") << "nan" << real << "";
}

void TestSignalValue::textsConvertOrFail()
{
    QFETCH(QString, given);
    QFETCH(int, type);
    const SignalValue converted =
        SignalValue(given.toStdString()).ConvertedTo(enSignalValueType(type));
    QTEST(converted.IsError() ? QString() : QString::fromStdString(converted.ToString()), "text");
}

void TestSignalValue::publishesNoInfinity_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity();
    QTest::newRow("not a number") << qQNaN();
}

void TestSignalValue::publishesNoInfinity()
{
    QFETCH(double, number);
    ValueCell cell;
    SignalValue heard;
    const boost::signals2::scoped_connection connection(
        cell.Subscribe([&](const SignalValue &value) { heard = value; }));
    SignalValue value(number);
    value.SetTimes(11, 12);
    cell.Publish(value);
    QVERIFY(heard == cell.Value());
    QVERIFY(heard.GetError() == Result::OutOfRange);
    QCOMPARE(heard.GetSourceTime(), Timestamp(11));
}

void TestSignalValue::qualityFollowsTheHeldAlternative()
{
    SignalValue value(20.5);
    value.SetQuality(Quality::Stale);
    QVERIFY(value != SignalValue(20.5));
    value.SetValue(Result(Result::NotConnected));
    value.SetQuality(Quality::Good);
    QCOMPARE(int(value.GetQuality()), int(Quality::Bad)); // an error cannot be made good
    value.SetValue(21.0);
    QVERIFY(value.IsGood());
}

void TestSignalValue::numberTextsSurviveARoundTrip_data()
{
    QTest::addColumn<double>("number");
    QTest::newRow("tenth") << 0.1;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("smallest") << std::numeric_limits<double>::denorm_min();
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity();
}

void TestSignalValue::numberTextsSurviveARoundTrip()
{
    QFETCH(double, number);
    const auto read = ParseDouble(FormatDouble(number));
    QVERIFY(read.has_value());
    QVERIFY(*read == number);
}

void TestSignalValue::formatsFixedDecimals_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("text");
    QTest::newRow("rounds") << 95.26 << 1 << "95.3";
    QTest::newRow("no minus before zero") << -0.04 << 1 << "0.0";
    QTest::newRow("negative stays") << -0.06 << 1 << "-0.1";
    QTest::newRow("no decimals") << 1234567.8 << 0 << "1234568";
    QTest::newRow("not a number") << qQNaN() << 1 << "nan";
}

void TestSignalValue::formatsFixedDecimals()
{
    QFETCH(double, number);
    QFETCH(int, decimals);
    QTEST(QString::fromStdString(FormatFixed(number, decimals)), "text");
}

void TestSignalValue::refusesDamagedColors_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isColor");
    QTest::newRow("opaque") << "#0a0b0c" << true;
    QTest::newRow("translucent") << "#0a0b0c80" << true;
    QTest::newRow("short") << "#abc" << false;
    QTest::newRow("no hash") << "0a0b0c0" << false;
    QTest::newRow("no digits") << "#0a0b0g" << false;
    QTest::newRow("sign") << "#0a-b0c" << false;
}

void TestSignalValue::refusesDamagedColors()
{
    QFETCH(QString, text);
    const auto color = NColor::FromHex(text.toStdString());
    QTEST(color.has_value(), "isColor");
    if (color)
        QCOMPARE(QString::fromStdString(color->ToHex()), text);
}

QTEST_APPLESS_MAIN(TestSignalValue)
#include "tst_signal_value.moc"
