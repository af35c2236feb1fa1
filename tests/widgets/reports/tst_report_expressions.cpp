#include "widgets/reports/ReportCells.h"

#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportErrors.h"
#include "widgets/reports/engine/expressions/ReportScope.h"

#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <limits>
#include <thread>

using namespace LimeReport;
using Nodes::Quality;

namespace {

const QDateTime begin(QDate(2026, 3, 1), QTime(6, 30, 5));

DataSet boiler()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    auto cells = std::make_shared<ReportCells>(
        QStringList{"time", "Давление", "note", "count", "flag", "gone", "worn"},
        QVector<QVariantList>{{begin, 0.1 + 0.2, "\"); fail(\"$V{plant} ${1+1}", 7, true, nan, 1.5},
                              {begin.addSecs(3600), 12.345, "<b>", 8, false, QVariant(), 2.5}});
    cells->qualities.insert({0, 6}, Quality::Stale);
    cells->qualities.insert({1, 6}, Quality::Bad);
    DataSet data;
    data.sources.insert("Котёл 1.пар", DataSource(cells));
    data.sources.insert("b", DataSource(cells));
    data.variables = {{"plant", "Котельная № 1"}, {"n", 4}, {"none", QVariant()}};
    return data;
}

} // namespace

class tst_report_expressions : public QObject
{
    Q_OBJECT

private slots:
    void text_data();
    void text();
    void errors_data();
    void errors();
    void formats_data();
    void formats();
    void wildScripts_data();
    void wildScripts();
    void cancelEndsScript();
    void pageCountIsKnownLater();
    void scriptsCantHarm();
    void aggregatesAreThoseOfNaiveSums();
    void partialSumsAreMarked();
    void headersAndRunningTotals();
    void linkedRows();
};

void tst_report_expressions::text_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("expected");

    QTest::newRow("plain") << "Цена $5 {x}"
                           << "Цена $5 {x}";
    QTest::newRow("field") << "[$D{b.Давление}]"
                           << "[0.3]";
    QTest::newRow("case of a column") << "$D{b.давление}"
                                      << "0.3";
    QTest::newRow("points and blanks in names") << "$D{Котёл 1.пар.count}"
                                                << "7";
    QTest::newRow("time, logical") << "$D{b.time} $D{b.flag}"
                                   << "01.03.2026 06:30:05 да";
    QTest::newRow("variables") << "$V{plant}: $V{n}"
                               << "Котельная № 1: 4";
    QTest::newRow("missing is no zero") << "$D{b.gone}|$V{none}"
                                        << "—|—";
    QTest::newRow("stale is marked") << "$D{b.worn}"
                                     << "1.5 ?";
    QTest::newRow("data is no expression") << "$D{b.note}"
                                           << "\"); fail(\"$V{plant} ${1+1}";
    QTest::newRow("data in a script is no code") << "$S{$D{b.note}.length + \"\"}"
                                                 << "26";
    QTest::newRow("data in a literal is no code") << "$S{\"a$D{b.note}b\"}"
                                                  << "a\"); fail(\"$V{plant} ${1+1}b";
    QTest::newRow("data in a template literal is no code") << "$S{`a$D{b.note}b${1+1}`}"
                                                           << "a\"); fail(\"$V{plant} ${1+1}b2";
    QTest::newRow("numbers in a script are numbers") << "$S{$D{b.count} + $V{n}}"
                                                     << "11";
    QTest::newRow("comparison with a literal") << "$S{\"$V{n}\" == \"4\" ? 'да' : 'нет'}"
                                               << "да";
    QTest::newRow("braces and quotes in a script") << "$S{var o = {a: '}'}; o.a + \"$D{b.count}\"}!"
                                                   << "}7!";
    QTest::newRow("comment with a brace") << "$S{1 /* } */ + 1 // }\n}"
                                          << "2";
    QTest::newRow("statements, last value") << "$S{var x = 2; if (x > 1) 'много'; else 'мало'}"
                                            << "много";
    QTest::newRow("statements, return") << "$S{for (var i = 0; i < 9; ++i) if (i == 3) return i;}"
                                        << "3";
    QTest::newRow("missing in a sum") << "$S{$D{b.gone} + 1}"
                                      << "—";
    QTest::newRow("missing in a text") << "$S{'a' + $D{b.gone}}"
                                       << "a—";
    QTest::newRow("missing is undefined") << "$S{$D{b.gone} === undefined ? 'нет' : 1}"
                                          << "нет";
    QTest::newRow("stale in a script is marked") << "$S{$D{b.worn} * 2}"
                                                 << "3 ?";
    QTest::newRow("no number") << "$S{0/0}|$S{1/0}|$S{null}"
                               << "—|—|—";
    QTest::newRow("page") << "$V{#PAGE}$S{$V{#PAGE} + 1}"
                          << "12";
    QTest::newRow("time arithmetic")
        << "$S{dateTimeFormat(new Date($D{b.time}.getTime() + 1000), 'hh:mm:ss')}"
        << "06:30:06";
    QTest::newRow("numberFormat") << "$S{numberFormat($D{b.Давление}, 'f', 2)}"
                                  << "0.30";
    QTest::newRow("numberFormat of a locale") << "$S{numberFormat(1234.5, 'f', 1, 'de_DE')}"
                                              << "1.234,5";
    QTest::newRow("numberFormat of nothing") << "$S{numberFormat($D{b.gone})}"
                                             << "—";
    QTest::newRow("dateFormat") << "$S{dateFormat($D{b.time}, 'd MMMM yyyy')}"
                                << "1 марта 2026";
    QTest::newRow("now is that of the report") << "$S{dateTimeFormat(now())} $S{dateFormat(date())}"
                                               << "02.03.2026 00:00:09 02.03.2026";
    QTest::newRow("currency") << "$S{currencyFormat(5, 'en_US')}"
                              << "$5.00";
    QTest::newRow("line, getField") << "$S{line('Rows')}: $S{getField('b.count')}"
                                    << "3: 7";
    QTest::newRow("setVariable") << "$S{setVariable('x', 5)}$V{x}"
                                 << "—5";
}

void tst_report_expressions::text()
{
    QFETCH(QString, content);
    ReportScope scope(boiler(), QDateTime(QDate(2026, 3, 2), QTime(0, 0, 9)));
    scope.setLine("Rows", 3);
    ContentExpander expander;
    const ContentExpander::Expanded expanded = expander.expand(content, scope);
    QCOMPARE(expanded.errors, QStringList());
    QTEST(expanded.text, "expected");
}

void tst_report_expressions::errors_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("error");

    QTest::newRow("no source") << "$D{c.x}"
                               << "нет источника данных «c»";
    QTest::newRow("no column") << "$D{b.x}"
                               << "нет столбца «x»";
    QTest::newRow("no point") << "$D{bx}"
                              << "не «источник.столбец»";
    QTest::newRow("no variable") << "$V{x}"
                                 << "нет переменной «x»";
    QTest::newRow("in a script") << "$S{1 + $D{b.x}}"
                                 << "нет столбца «x»";
    QTest::newRow("syntax") << "$S{1 +}"
                            << "ожидается «numeric literal». Проверьте скобки";
    QTest::newRow("thrown") << "$S{null.x}"
                            << "свойство «x» спрошено у пустого";
    QTest::newRow("thrown text") << "$S{throw 'Ой'}"
                                 << "Ой";
    QTest::newRow("unknown function") << "$S{open('/etc/passwd')}"
                                      << "имя «open» неизвестно";
    QTest::newRow("getField") << "$S{getField('b.x')}"
                              << "нет столбца «x»";
    QTest::newRow("aggregate without band") << "$S{SUM($D{b.count})}"
                                            << "названия полосы";
    QTest::newRow("recursion") << "$S{(function f() { return f() + 1; })()}"
                               << "сама себя без конца";
    QTest::newRow("huge text") << "$S{'x'.repeat(2000000000)}"
                               << "текст длиннее 1000000 знаков";
    QTest::newRow("functions stay") << "$S{'use strict'; now = 1; now}"
                                    << "не делается";
    QTest::newRow("line") << "$S{var a = 1;\nvar b = a;\nb.c.d}"
                          << "(строка 3)";
    QTest::newRow("kind") << "$S{decodeURIComponent('%')}"
                          << "недопустимое значение: malformed URI";
}

void tst_report_expressions::errors()
{
    QFETCH(QString, content);
    QFETCH(QString, error);
    ReportScope scope(boiler());
    scope.setPlace({"Rows", "Text7"});
    ContentExpander expander;
    for (int row = 0; row < 2; ++row) {
        scope.setRow("b", row);
        const ContentExpander::Expanded expanded = expander.expand("a " + content, scope);
        QCOMPARE(expanded.text, "a " + content + " (!)");
        QCOMPARE(expanded.errors.size(), 1);
        QVERIFY2(expanded.errors.first().contains(error), qPrintable(expanded.errors.first()));
        QVERIFY(expanded.errors.first().startsWith("полоса «Rows», элемент «Text7»: "));
    }
    QCOMPARE(scope.errors().texts().size(), 1);
    QVERIFY(scope.errors().texts().first().endsWith("(раз: 2)"));
    QCOMPARE(expander.expand("$V{n}", scope).text, QString("4")); // what failed harms nothing else
}

void tst_report_expressions::formats_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("isWrong");

    QTest::newRow("number") << "p=$D{b.Давление} кПа" << 2 << "%.2f"
                            << "p=0.30 кПа" << false;
    QTest::newRow("number with words") << "$S{1500}" << 2 << "%06.1f кг 5%%"
                                       << "1500.0 кг 5%" << false;
    QTest::newRow("usual type") << "$D{b.Давление} $D{b.note}" << 0 << "%.1f"
                                << "0.3 \"); fail(\"$V{plant} ${1+1}" << false;
    QTest::newRow("whole") << "$S{3000000000}" << 2 << "%d"
                           << "3000000000" << false;
    QTest::newRow("time") << "$D{b.time}" << 1 << "dd.MM hh:mm"
                          << "01.03 06:30" << false;
    QTest::newRow("nothing") << "$D{b.gone}" << 2 << "%.2f"
                             << "—" << false;
    QTest::newRow("no number") << "$V{plant}" << 2 << "%.2f"
                               << "Котельная № 1" << true;
    QTest::newRow("no time") << "$V{plant}" << 1 << "hh"
                             << "Котельная № 1" << true;
    QTest::newRow("text conversion") << "$V{n}" << 2 << "%s"
                                     << "4" << true;
    QTest::newRow("two conversions") << "$V{n}" << 2 << "%f %n"
                                     << "4" << true;
    QTest::newRow("wide") << "$V{n}" << 2 << "%999999999f"
                          << "4" << true;
}

void tst_report_expressions::formats()
{
    QFETCH(QString, content);
    QFETCH(int, type);
    QFETCH(QString, format);
    ReportScope scope(boiler());
    ContentExpander expander;
    ContentFormat wanted;
    wanted.valueType = type;
    wanted.format = format;
    const ContentExpander::Expanded expanded = expander.expand(content, scope, wanted);
    QTEST(expanded.text, "expected");
    QTEST(!expanded.errors.isEmpty(), "isWrong");
    scope.setRow("b", 1);
    wanted = ContentFormat();
    wanted.isHtml = true;
    QCOMPARE(expander.expand("<i>$D{b.note}</i>$S{1 &lt; 2}", scope, wanted).text,
             QString("<i>&lt;b&gt;</i>да"));
}

void tst_report_expressions::wildScripts_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("error");

    QTest::newRow("loop") << "while (true) {}"
                          << "не закончился вовремя";
    QTest::newRow("loop that catches") << "while (true) { try { while (true) {} } catch (e) {} }"
                                       << "не закончился вовремя";
    QTest::newRow("loop in what makes the text") << "({toString: function () { while (true) {} }})"
                                                 << "не закончился вовремя";
    QTest::newRow("memory")
        << "var a = []; while (true) a.push(new Array(1000).join('abc' + a.length))"
        << "не хватило памяти";
}

void tst_report_expressions::wildScripts()
{
    QFETCH(QString, script);
    QFETCH(QString, error);
    ScriptLimits limits;
    const bool isOfMemory = error.contains("памяти");
    limits.time = std::chrono::milliseconds(isOfMemory ? 60000 : 50);
    limits.bytes = std::size_t(isOfMemory ? 32 : 1024) << 20;
    ReportScope scope(boiler());
    ContentExpander expander(nullptr, limits);
    const QString content = "$S{runs = typeof runs == 'undefined' ? 1 : 2; " + script + "}";
    const QStringList errors = expander.expand(content, scope).errors;
    QCOMPARE(errors.size(), 1);
    QVERIFY2(errors.first().contains(error), qPrintable(errors.first()));
    QCOMPARE(expander.expand("$S{1 + 1}", scope).text, QString("2"));

    // Once ended it isn't run again: a million rows don't wait a million times.
    expander.expand(content, scope);
    QCOMPARE(expander.expand("$S{runs}", scope).text, QString("1"));
    QVERIFY(scope.errors().texts().first().endsWith("(раз: 2)"));
}

void tst_report_expressions::cancelEndsScript()
{
    ScriptLimits limits;
    limits.time = std::chrono::hours(1);
    ReportScope scope(boiler());
    ContentExpander expander(nullptr, limits);
    std::thread canceller([&expander] { expander.cancel(); });
    QVERIFY(expander.expand("$S{while (true) {}}", scope).errors.first().contains("прервано"));
    canceller.join();
    QVERIFY(expander.expand("$S{1}", scope).errors.first().contains("прервано"));
}

void tst_report_expressions::pageCountIsKnownLater()
{
    ReportScope scope(boiler());
    ContentExpander expander;
    scope.setPage(3);
    for (const QString &content :
         {QString("$V{#PAGE} из $V{#PAGE_COUNT}"),
          QString("$S{$V{#PAGE} + ' из ' + $V{#PAGE_COUNT}}"),
          QString("$S{getVariable('#PAGE') + ' из ' + getVariable('#PAGE_COUNT')}")}) {
        const ContentExpander::Expanded first = expander.expand(content, scope);
        QVERIFY(first.needsSecondPass);
        QVERIFY(first.errors.isEmpty());
        const ReportScope::Position kept = scope.position();
        scope.setPage(9);
        scope.setPageCount(12);
        scope.setPosition(kept);
        const ContentExpander::Expanded second = expander.expand(content, scope);
        QCOMPARE(second.text, QString("3 из 12"));
        QVERIFY(!second.needsSecondPass);
        scope.setPageCount(std::nullopt);
    }
}

void tst_report_expressions::scriptsCantHarm()
{
    ReportScope scope(boiler());
    ContentExpander expander;
    for (const QString name : {"XMLHttpRequest", "Qt", "console", "require", "ArrayBuffer", "host"})
        QCOMPARE(expander.expand("$S{typeof " + name + "}", scope).text, QString("undefined"));
    expander.expand("$S{(function () { this.numberFormat = null; })()}", scope);
    QCOMPARE(expander.expand("$S{numberFormat(1)}", scope).text, QString("1.00"));
    QCOMPARE(expander.runInitScript("function twice(x) { return 2 * x; }", scope), QString());
    QCOMPARE(expander.expand("$S{twice($V{n})}", scope).text, QString("8"));
    QVERIFY(expander.runInitScript("function (", scope).contains("ошибка в записи"));
}

void tst_report_expressions::aggregatesAreThoseOfNaiveSums()
{
    QRandomGenerator random(20260301);
    QVector<QVariantList> rows;
    for (int i = 0; i < 3000; ++i)
        rows.append({random.bounded(40) ? QVariant(random.bounded(2000.0) - 1000) : QVariant()});
    DataSet data;
    data.sources.insert("s", DataSource(std::make_shared<ReportCells>(QStringList{"x"}, rows)));
    ReportScope scope(data);
    AggregateBook book;
    const QString content = "$S{SUM($D{s.x},\"Rows\") + '|' + COUNT(\"$D{s.x}\",\"Rows\") + '|' + "
                            "AVG($D{s.x} * 2, \"Rows\") + '|' + MIN($D{s.x},\"Rows\") + '|' + "
                            "MAX($D{s.x},\"Rows\") + '|' + COUNT(\"Rows\")}";
    book.addContent(content);
    ContentExpander expander(&book);

    struct Naive
    {
        QVector<double> values;
        int rows = 0;
        void add(const QVariant &value)
        {
            ++rows;
            if (value.isValid())
                values.append(value.toDouble());
        }
    };
    const auto check = [&](const Naive &naive, ContentPlace::Range range) {
        scope.setPlace({"Band", "Item", range, "Group"});
        const QStringList told = expander.expand(content, scope).text.split(' ').first().split('|');
        QVERIFY2(told.size() == 6, qPrintable(told.join('|')));
        double sum = 0;
        for (const double value : naive.values)
            sum += value;
        const auto minmax = std::minmax_element(naive.values.begin(), naive.values.end());
        QVERIFY(std::abs(told[0].toDouble() - sum) < 1e-6);
        QCOMPARE(told[1].toInt(), naive.values.size());
        QVERIFY(std::abs(told[2].toDouble() - 2 * sum / naive.values.size()) < 1e-6);
        QVERIFY(std::abs(told[3].toDouble() - *minmax.first) < 1e-9);
        QVERIFY(std::abs(told[4].toDouble() - *minmax.second) < 1e-9);
        QCOMPARE(told[5].toInt(), naive.rows);
    };
    Naive report, group, page;
    book.beginPage(1);
    book.beginGroup("Group", scope);
    for (int i = 0, number = 1; i < rows.size(); ++i) {
        if (i % 97 == 96) {
            check(group, ContentPlace::Range::Group);
            group = Naive();
            book.endGroup("Group");
            book.beginGroup("Group", scope);
        }
        scope.setRow("s", i);
        scope.setPlace({"Rows", ""});
        book.takeRow("Rows", expander, scope);
        if (i % 61 == 60) { // the row taken last moves to the next page
            scope.setPage(number);
            check(page, ContentPlace::Range::Page);
            page = Naive();
            book.beginPage(++number);
            scope.setPage(number);
        }
        book.placeRow("Rows");
        for (Naive *sums : {&report, &group, &page})
            sums->add(rows[i][0]);
    }
    check(report, ContentPlace::Range::Report);
    QVERIFY(scope.errors().isEmpty());
}

void tst_report_expressions::partialSumsAreMarked()
{
    ReportScope scope(boiler());
    AggregateBook book;
    const QString content = "$S{SUM($D{b.worn},\"R\")}|$S{SUM($D{b.count},\"R\")}|"
                            "$S{SUM($D{b.gone},\"R\")}|$S{COUNT($D{b.gone},\"R\")}|"
                            "$S{dateTimeFormat(MAX($D{b.time},\"R\"))}|$S{SUM($D{b.note},\"R\")}";
    book.addContent(content);
    ContentExpander expander(&book);
    for (int row = 0; row < 2; ++row) {
        scope.setRow("b", row);
        book.takeRow("R", expander, scope);
    }
    QCOMPARE(expander.expand(content, scope).text, QString("1.5 ?|15|—|0|01.03.2026 07:30:05|—"));
    const QStringList errors = expander.expand("$S{SUM($D{b.flag},\"R\")}", scope).errors;
    QVERIFY(errors.first().contains("спросить нельзя"));
}

void tst_report_expressions::headersAndRunningTotals()
{
    ReportScope scope(boiler());
    AggregateBook book;
    const QString sum = "$S{SUM($D{b.count},\"R\")}";
    const QString running = sum + " $V{#PAGE_COUNT}";
    book.addContent(sum);
    ContentExpander expander(&book);
    scope.setPlace({"Header", "", ContentPlace::Range::Report, "", true});
    QVERIFY(expander.expand(sum, scope).needsSecondPass);
    const ReportScope::Position header = scope.position();
    QVector<ReportScope::Position> positions;
    for (int row = 0; row < 2; ++row) {
        scope.setRow("b", row);
        scope.setPlace({"R", ""});
        book.takeRow("R", expander, scope);
        QVERIFY(expander.expand(running, scope).needsSecondPass);
        positions.append(scope.position());
    }
    book.finish();
    scope.setPageCount(2);
    scope.setPosition(header);
    QCOMPARE(expander.expand(sum, scope).text, QString("15"));
    scope.setPosition(positions[0]); // what the row told stays what it told
    QCOMPARE(expander.expand(running, scope).text, QString("7 2"));
    scope.setPosition(positions[1]);
    QCOMPARE(expander.expand(running, scope).text, QString("15 2"));
}

void tst_report_expressions::linkedRows()
{
    DataSet data;
    const auto add = [&data](const QString &name, QStringList columns, QVector<QVariantList> rows) {
        data.sources.insert(name, DataSource(std::make_shared<ReportCells>(columns, rows)));
    };
    add("shops", {"id"}, {{1}, {2}, {QVariant()}});
    add("sales", {"shop", "sum"}, {{"2", 5}, {1, 6}, {2, 7}, {QVariant(), 8}});
    data.links = {{"linked", "shops", "sales", {"id"}, {"shop"}},
                  {"wrong", "shops", "sales", {"no"}, {"shop"}}};
    ReportScope scope(data);
    ContentExpander expander;
    QStringList told;
    for (int master = 0; master < scope.rowCount("shops"); ++master) {
        scope.setRow("shops", master);
        for (int row = 0; row < scope.rowCount("linked"); ++row) {
            scope.setRow("linked", row);
            told += expander.expand("$D{shops.id}:$D{linked.sum}", scope).text;
        }
    }
    QCOMPARE(told, QStringList({"1:6", "2:5", "2:7"}));
    QCOMPARE(scope.rowCount("wrong"), 0);
    QVERIFY(scope.errors().texts().first().contains("столбец «no»"));
}

QTEST_GUILESS_MAIN(tst_report_expressions)
#include "tst_report_expressions.moc"
