// Formats of numbers as projects write them: what they give, and what they must not do.
#include "support/Rows.h"

#include "nodes/values/NumberFormat.h"

#include <clocale>
#include <cmath>

class TestNumberFormat : public QObject
{
    Q_OBJECT

private slots:
    void text_data()
    {
        const Rows<std::string, double, std::string> row("format", "value", "text");
        row("default of axes", "%3.2f", 3.14159, "3.14");
        row("width", "%8.1f", -2.25, "    -2.2");
        row("around", "<%.1f °C, 100%%>", 20.05, "<20.1 °C, 100%>");
        row("whole", "%05d", 41.6, "00042");
        row("unsigned of less than zero", "%u", -3.0, "-3");
        row("exponent", "%.2e", 123456.0, "1.23e+05");
        row("sign", "%+g", 1.5, "+1.5");
        row("no minus before zero", "%.1f", -0.04, "0.0");
        row("longest", "%.30f", -1e308, "");
        row("no number", "%.1f A", std::nan(""), "---- A");
        row("infinite", "%d", HUGE_VAL, "----");
    }
    void text()
    {
        QFETCH(std::string, format);
        QFETCH(double, value);
        QFETCH(std::string, text);
        const auto parsed = Nodes::NumberFormat::Parse(format);
        QVERIFY(parsed);
        if (text.empty())
            QCOMPARE(parsed->Text(value).size(), std::size_t(1 + 309 + 1 + 30));
        else
            QCOMPARE(parsed->Text(value), text);
    }

    void refused_data()
    {
        const Rows<std::string> row("format");
        row("writes memory", "%n");
        row("reads memory", "%s");
        row("reads a pointer", "%p");
        row("a character", "%c");
        row("two numbers", "%f %f");
        row("number and string", "%f%s");
        row("none", "°C");
        row("empty", "");
        row("only percent", "100%%");
        row("cut off", "%");
        row("cut off in the flags", "%-+");
        row("cut off in the precision", "%5.");
        row("width from the stack", "%*d");
        row("precision from the stack", "%.*f");
        row("position", "%1$f");
        row("width without end", "%99999999999f");
        row("precision", "%.31f");
        row("long double", "%Lf");
        row("integer with precision", "%.3d");
        row("hexadecimal", "%x");
        row("very long", std::string(64, ' ') + "%f");
    }
    void refused()
    {
        QFETCH(std::string, format);
        std::string problem;
        QVERIFY(!Nodes::NumberFormat::Parse(format, &problem));
        QVERIFY(!problem.empty());
    }

    // Programs with a desktop run in the locale of their user.
    void pointInAnyLocale()
    {
        for (const char *locale : {"ru_RU.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8"}) {
            if (std::setlocale(LC_NUMERIC, locale))
                break;
        }
        QCOMPARE(Nodes::NumberFormat::Parse("%.2f")->Text(1234.5), std::string("1234.50"));
        std::setlocale(LC_NUMERIC, "C");
    }
};

QTEST_APPLESS_MAIN(TestNumberFormat)
#include "tst_number_format.moc"
