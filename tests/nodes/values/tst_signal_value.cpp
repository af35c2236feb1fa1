#include "nodes/model/ConfigNode.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NumberText.h"
#include "nodes/values/OperatorText.h"
#include "nodes/values/SignalValue.h"
#include "nodes/values/ValueCell.h"
#include "support/Rows.h"

#include <QtTest>

#include <cmath>
#include <limits>

Q_DECLARE_METATYPE(Nodes::SignalValue)
Q_DECLARE_METATYPE(Nodes::enSignalValueType)

using namespace Nodes;

class TestSignalValue : public QObject
{
    Q_OBJECT
private slots:
    void everyResultHasARussianText()
    {
        QStringList texts;
        for (int type = Result::Success; type <= Result::ReadOnly; ++type) {
            const Result result(Result::ResultType(type), "technical");
            texts << QString::fromStdString(result.GetResultTranslated());
            QVERIFY2(!texts.last().contains(QRegularExpression("[A-Za-z0-9]")),
                     qPrintable(texts.last()));
            QCOMPARE(QString::fromStdString(OperatorText(result)), texts.last() + " (technical)");
        }
        const ConfigNode *nobody = nullptr;
        for (const int code : {1317, 1318})
            texts << QString::fromStdString(
                Result(nobody, Result::AuthenticationFailed, code).GetResultTranslated());
        QCOMPARE(texts.removeDuplicates(), 0);
        QCOMPARE(Result(nobody, Result::Failed, 1320).GetResultTranslated(),
                 Result(Result::AccessDenied).GetResultTranslated());
    }

    void errorsNeverReadAsNumbers()
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

    void readsNumbers_data()
    {
        const Rows<QString, double, int, bool> row("text", "number", "integer", "isTrue");
        row("decimal", "1.5", 1.5, 2, false);
        row("one", "1", 1.0, 1, true);
        row("beyond int", "3e9", 3e9, std::numeric_limits<int>::max(), false);
        row("comma is no number", "1,5", qQNaN(), 0, false);
        row("trailing unit is no number", "1.5 bar", qQNaN(), 0, false);
        row("empty", "", qQNaN(), 0, false);
        row("word", "true", qQNaN(), 0, true);
    }

    void readsNumbers()
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

    void convertsWithoutLosing_data()
    {
        // text: "" where the value does not fit
        const Rows<SignalValue, enSignalValueType, std::string> row("given", "type", "text");
        using Type = enSignalValueType;
        row("rounded", 2.5, Type::Int, "3");
        row("lowest int", -2147483648.0, Type::Int, "-2147483648");
        row("above int", 2147483647.5, Type::Int, "");
        row("below int", -2147483649.0, Type::Int, "");
        row("negative unsigned", -1., Type::ULong, "");
        row("above unsigned", 18446744073709551616.0, Type::ULong, "");
        row("no number", qQNaN(), Type::Int, "");
        row("logical", 7., Type::Bool, "true");
        row("text of a number above one is true", "2", Type::Bool, "true");
        row("text with decimals", "0.0", Type::Bool, "false");
        row("word", "false", Type::Bool, "false");
        row("other word", "yes", Type::Bool, "");
        row("text: infinite", "inf", Type::Double, "");
        row("text: not a number", "nan", Type::Double, "");
    }

    void convertsWithoutLosing()
    {
        QFETCH(SignalValue, given);
        QFETCH(enSignalValueType, type);
        given.SetQuality(Quality::Uncertain);
        given.SetTimes(11, 12);
        const SignalValue converted = given.ConvertedTo(type);
        QTEST(converted.IsError() ? std::string() : converted.ToString(), "text");
        QCOMPARE(converted.GetSourceTime(), Timestamp(11));
        QCOMPARE(converted.GetQuality(), converted.IsError() ? Quality::Bad : Quality::Uncertain);
    }

    void publishesNoInfinity()
    {
        ValueCell cell;
        SignalValue heard;
        const Nodes::ScopedConnection connection(
            cell.Subscribe([&](const SignalValue &value) { heard = value; }));
        for (const double number : {-std::numeric_limits<double>::infinity(), qQNaN()}) {
            SignalValue value(number);
            value.SetTimes(11, 12);
            cell.Publish(value);
            QVERIFY(heard == cell.Value());
            QVERIFY(heard.GetError() == Result::OutOfRange);
            QCOMPARE(heard.GetSourceTime(), Timestamp(11));
            cell.Publish(1.5);
        }
    }

    void qualityFollowsTheHeldAlternative()
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

    void numberTextsSurviveARoundTrip()
    {
        using Limits = std::numeric_limits<double>;
        for (const double number : {0.1, Limits::max(), Limits::denorm_min(), -Limits::infinity()})
            QVERIFY(ParseDouble(FormatDouble(number)) == number);
    }

    void formatsFixedDecimals_data()
    {
        const Rows<double, int, QString> row("number", "decimals", "text");
        row("rounds", 95.26, 1, "95.3");
        row("no minus before zero", -0.04, 1, "0.0");
        row("negative stays", -0.06, 1, "-0.1");
        row("no decimals", 1234567.8, 0, "1234568");
        row("not a number", qQNaN(), 1, "nan");
    }

    void formatsExactly_data()
    {
        const Rows<double, int, QString> row("number", "decimals", "text");
        row("never with an exponent", 2e6, 0, "2000000");
        row("as many decimals as shown", 90, 1, "90.0");
        row("no digit is lost", 0.125, 1, "0.125");
        row("small", 2.5e-7, 0, "0.00000025");
        row("negative", -7.25, 0, "-7.25");
        row("no plant has it", 1e300, 2, "1e+300");
        row("not a number", qQNaN(), 1, "nan");
    }

    void formatsExactly()
    {
        QFETCH(double, number);
        QFETCH(int, decimals);
        QTEST(QString::fromStdString(FormatExact(number, decimals)), "text");
    }

    void formatsFixedDecimals()
    {
        QFETCH(double, number);
        QFETCH(int, decimals);
        QTEST(QString::fromStdString(FormatFixed(number, decimals)), "text");
        QTEST(QString::fromStdString(FormatShown(number, decimals)), "text");
        QVERIFY(FormatShown(number * -1e38, decimals).size() < 15);
    }

    void refusesDamagedColors_data()
    {
        const Rows<QString, bool> row("text", "isColor");
        row("opaque", "#0a0b0c", true);
        row("translucent", "#0a0b0c80", true);
        row("short", "#abc", false);
        row("no hash", "0a0b0c0", false);
        row("no digits", "#0a0b0g", false);
        row("sign", "#0a-b0c", false);
    }

    void refusesDamagedColors()
    {
        QFETCH(QString, text);
        const auto color = NColor::FromHex(text.toStdString());
        QTEST(color.has_value(), "isColor");
        if (color)
            QCOMPARE(QString::fromStdString(color->ToHex()), text);
    }
};

QTEST_APPLESS_MAIN(TestSignalValue)
#include "tst_signal_value.moc"
