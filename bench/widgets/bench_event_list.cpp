// A list of a million events beside QSortFilterProxyModel over the same rows, and beside the limit:
// a bare vector of row numbers sorted and searched by plain means.
//
//     bench_event_list [--rows N] [--texts N] [--no-peer]
//
// Budget, a million rows: sort by a number 120 ms, by a text 250, 1,000 rows more while sorted 3,
// "contains" 40. Medians of five runs, the peer's of one.
#include "widgets/eventlist/WidgetEventModel.h"
#include "widgets/eventlist/WidgetEventSortModel.h"

#include "nodes/visual/events/ColumnInfo.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCommandLineParser>
#include <QSortFilterProxyModel>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <numeric>
#include <random>

using namespace Widgets;
using Nodes::ColumnInfo;

namespace {

using Clock = std::chrono::steady_clock;
constexpr int added = 1000;
constexpr int runs = 5;

double once(const std::function<void()> &work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double median(const std::function<void()> &work)
{
    std::vector<double> times;
    for (int i = 0; i < runs; ++i)
        times.push_back(once(work));
    std::sort(times.begin(), times.end());
    return times[runs / 2];
}

struct Row
{
    qint64 time;
    QString text;
};

/// Times in no order, that many texts.
std::vector<Row> makeRows(int count, int texts)
{
    std::vector<QString> known;
    std::mt19937_64 chance(1);
    std::vector<Row> rows;
    rows.reserve(std::size_t(count));
    for (int i = 0; i < texts; ++i)
        known.push_back(QStringLiteral("Насос %1: давление %2 МПа выше предела")
                            .arg(int(chance() % 500))
                            .arg(double(chance() % 1000000) / 1000));
    for (int i = 0; i < count; ++i)
        rows.push_back({qint64(chance() % 86400000000ull) + 1700000000000000,
                        known[std::size_t(chance()) % known.size()]});
    return rows;
}

std::vector<Nodes::EventInfo> eventsOf(const std::vector<Row> &rows, std::size_t first,
                                       std::size_t count)
{
    std::vector<Nodes::EventInfo> events;
    for (std::size_t i = first; i < first + count && i < rows.size(); ++i) {
        Nodes::BasicEvent event;
        event.id = i + 1;
        event.time = rows[i].time;
        event.text = rows[i].text.toStdString();
        event.source = "К1/T";
        events.emplace_back(std::move(event));
    }
    return events;
}

class PlainModel : public QAbstractTableModel
{
public:
    explicit PlainModel(std::vector<Row> content) : rows(std::move(content)) {}
    int rowCount(const QModelIndex &) const override { return int(rows.size()); }
    int columnCount(const QModelIndex &) const override { return 2; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        const Row &row = rows[std::size_t(index.row())];
        return index.column() == 0 ? QVariant(row.time) : QVariant(row.text);
    }
    void append(const std::vector<Row> &more)
    {
        beginInsertRows({}, int(rows.size()), int(rows.size() + more.size()) - 1);
        rows.insert(rows.end(), more.begin(), more.end());
        endInsertRows();
    }
    std::vector<Row> rows;
};

struct Result
{
    double number = 0;
    double text = 0;
    double append = 0;
    double contains = 0;
};

Result measureOurs(const std::vector<Row> &rows, const std::vector<Row> &more)
{
    constexpr std::size_t page = 4000;
    WidgetEventModel model(nullptr);
    WidgetEventSortModel sorted(nullptr);
    sorted.setSourceModel(&model);
    const double load = once([&] {
        for (std::size_t first = 0; first < rows.size(); first += page)
            model.appendItems(eventsOf(rows, first, page));
    });
    std::printf("pages of %zu appended in the order of time: %.1f ms each, %.0f MB held\n", page,
                load / double(rows.size() / page), double(model.bytes()) / 1e6);
    Result result;
    bool isRising = false;
    const auto order = [&] {
        isRising = !isRising;
        return isRising ? Qt::AscendingOrder : Qt::DescendingOrder;
    };
    const int number = WidgetEventModel::columnOf(ColumnInfo::ColumnTime);
    const int text = WidgetEventModel::columnOf(ColumnInfo::ColumnText);
    // Once as after loading, when no place of a text is known yet.
    result.text = once([&] { sorted.sort(text, order()); });
    std::printf("by a text for the first time: %.1f ms\n", result.text);
    result.text = std::max(result.text, median([&] { sorted.sort(text, order()); }));
    result.number = median([&] { sorted.sort(number, order()); });
    const std::vector<Nodes::EventInfo> fresh = eventsOf(more, 0, more.size());
    result.append = median([&] { model.appendItems(fresh); });
    int wanted = 700;
    result.contains = median([&] {
        EventRowFilter filter;
        filter.text = QStringLiteral("ление %1").arg(wanted++);
        sorted.setFilter(filter);
    });
    return result;
}

Result measurePeer(const std::vector<Row> &rows, const std::vector<Row> &more)
{
    PlainModel model(rows);
    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model);
    sorted.setFilterCaseSensitivity(Qt::CaseInsensitive);
    sorted.setFilterKeyColumn(1);
    Result result;
    result.text = once([&] { sorted.sort(1); });
    result.number = once([&] { sorted.sort(0); });
    result.append = once([&] { model.append(more); });
    result.contains = once([&] { sorted.setFilterFixedString(QStringLiteral("ление 700")); });
    return result;
}

Result measureLimit(const std::vector<Row> &rows)
{
    Result result;
    std::vector<quint32> order(rows.size());
    const auto sort = [&](const auto &isBefore) {
        std::iota(order.begin(), order.end(), 0);
        std::sort(order.begin(), order.end(), isBefore);
    };
    std::vector<std::pair<qint64, quint32>> keys(rows.size());
    result.number = median([&] {
        for (std::size_t i = 0; i < rows.size(); ++i)
            keys[i] = {rows[i].time, quint32(i)};
        std::sort(keys.begin(), keys.end());
    });
    result.text = median([&] {
        sort([&](quint32 left, quint32 right) { return rows[left].text < rows[right].text; });
    });
    result.append = median([&] { order.insert(order.begin() + long(order.size() / 2), added, 0); });
    std::vector<quint32> found;
    result.contains = median([&] {
        found.clear();
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows[i].text.contains(QStringLiteral("ление 700")))
                found.push_back(quint32(i));
    });
    return result;
}

void print(const char *who, const Result &result)
{
    std::printf("%-24s %10.1f %10.1f %10.2f %10.1f\n", who, result.number, result.text,
                result.append, result.contains);
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({QStringLiteral("rows"), QStringLiteral("Rows."), QStringLiteral("N"),
                      QStringLiteral("1000000")});
    parser.addOption({QStringLiteral("texts"), QStringLiteral("Different texts."),
                      QStringLiteral("N"), QStringLiteral("10000")});
    parser.addOption({QStringLiteral("no-peer"), QStringLiteral("Leaves the peer out.")});
    parser.process(application);
    const int texts = parser.value(QStringLiteral("texts")).toInt();
    const std::vector<Row> rows = makeRows(parser.value(QStringLiteral("rows")).toInt(), texts);
    const std::vector<Row> more = makeRows(added, texts);
    const Result ours = measureOurs(rows, more);
    std::printf("%-24s %10s %10s %10s %10s\n", "ms", "number", "text", "append", "contains");
    print("event list", ours);
    if (!parser.isSet(QStringLiteral("no-peer")))
        print("QSortFilterProxyModel", measurePeer(rows, more));
    print("bare index vector", measureLimit(rows));
    return 0;
}
