#include "widgets/reports/engine/expressions/AggregateBook.h"
#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/expressions/ReportScope.h"

#include <QCoreApplication>
#include <QJSEngine>

#include <benchmark/benchmark.h>

// Contents of templates expanded for each of 100,000 rows, beside what the same costs written out
// in C++ and, for scripts, beside calling a compiled function of the script engine with nothing
// around. Items are expanded contents.

using namespace LimeReport;

namespace {

constexpr int rows = 100000;

class Rows : public SharedRows
{
public:
    QStringList columns() const override { return {"time", "value", "name"}; }
    int rowCount() const override { return rows; }
    QVariant value(int row, int column) const override
    {
        return column == 2 ? QVariant(m_name) : QVariant(row * 0.25);
    }

private:
    QString m_name = "Давление пара";
};

DataSet data()
{
    DataSet set;
    set.sources.insert("hours", DataSource(std::make_shared<Rows>()));
    return set;
}

void expand(benchmark::State &state, const QString &content, bool hasAggregates = false)
{
    for (auto _ : state) {
        ReportScope scope(data());
        AggregateBook book;
        book.addContent(content);
        ContentExpander expander(&book);
        for (int row = 0; row < rows; ++row) {
            scope.setRow("hours", row);
            if (hasAggregates) {
                book.takeRow("Data", expander, scope);
                book.placeRow("Data");
            }
            benchmark::DoNotOptimize(expander.expand(content, scope).text);
        }
    }
    state.SetItemsProcessed(state.iterations() * rows);
}

void bm_field(benchmark::State &state)
{
    expand(state, "$D{hours.name}: $D{hours.value} кПа");
}

void bm_fieldWrittenOut(benchmark::State &state)
{
    const Rows source;
    for (auto _ : state)
        for (int row = 0; row < rows; ++row) {
            const QString text = source.value(row, 2).toString() + ": " +
                                 QString::number(source.value(row, 1).toDouble(), 'g', 15) + " кПа";
            benchmark::DoNotOptimize(text.constData());
        }
    state.SetItemsProcessed(state.iterations() * rows);
}

void bm_script(benchmark::State &state)
{
    expand(state, "$S{$D{hours.value} * 2 + 1}");
}

void bm_scriptBareCall(benchmark::State &state)
{
    QJSEngine engine;
    QJSValue function = engine.evaluate("(function(v){return v * 2 + 1})");
    for (auto _ : state)
        for (int row = 0; row < rows; ++row)
            benchmark::DoNotOptimize(
                QString::number(function.call({QJSValue(row * 0.25)}).toNumber(), 'g', 15));
    state.SetItemsProcessed(state.iterations() * rows);
}

void bm_scriptFunction(benchmark::State &state)
{
    expand(state, "$S{numberFormat($D{hours.value}, 'f', 2)}");
}

void bm_runningTotal(benchmark::State &state)
{
    expand(state, "$S{SUM($D{hours.value},\"Data\")}", true);
}

BENCHMARK(bm_field)->Unit(benchmark::kMillisecond);
BENCHMARK(bm_fieldWrittenOut)->Unit(benchmark::kMillisecond);
BENCHMARK(bm_script)->Unit(benchmark::kMillisecond);
BENCHMARK(bm_scriptBareCall)->Unit(benchmark::kMillisecond);
BENCHMARK(bm_scriptFunction)->Unit(benchmark::kMillisecond);
BENCHMARK(bm_runningTotal)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
