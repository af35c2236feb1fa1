#include "nodes/reports/data/SignalInquiry.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistoryService.h"
#include "nodes/archive/HistorySource.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/data/RowAggregator.h"
#include "nodes/reports/time/LocalCalendar.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace Nodes {

namespace {

// A span is read in pieces, so that a month of a fast signal needs no more memory than some hours.
constexpr Timestamp piece = 6 * 3600 * Timestamp(1000000);
constexpr std::size_t everySample = 0;

using Taker = std::function<bool(const HistoryColumn &, std::size_t)>; // false: enough

Result readPiece(const HistorySource &source, const ReportSpan &span, Timestamp &newest,
                 const Taker &take, const std::atomic<bool> &isCancelled)
{
    HistoryColumnBuilder builder(span.begin, span.end - 1, everySample);
    const Result read = source.Read(builder, isCancelled);
    const HistoryColumn column = builder.Take();
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        // The edges of a piece belong to its neighbours too.
        if (column.times[i] <= newest || column.times[i] >= span.end)
            continue;
        newest = column.times[i];
        if (!take(column, i))
            return Result(Result::LimitExceeded, "too many samples");
    }
    return read;
}

Result readAll(const HistorySource &source, const ReportSpan &span, const Taker &take,
               const std::atomic<bool> &isCancelled)
{
    Timestamp newest = INT64_MIN;
    Result result;
    for (Timestamp begin = span.begin; begin < span.end; begin += piece) {
        if (isCancelled)
            return Result(Result::Cancelled);
        const ReportSpan part{begin, std::min(begin + piece, span.end)};
        const Result read = readPiece(source, part, newest, take, isCancelled);
        if (read == Result::Cancelled || read == Result::LimitExceeded)
            return read;
        if (!read && result)
            result = read; // what can be read is
    }
    return result;
}

} // namespace

SignalInquiry SignalInquiry::Of(const ReportSignalInfo &info, const ReportOrder &order)
{
    SignalInquiry inquiry;
    inquiry.name = info.GetName();
    inquiry.threshold = info.GetThreshold();
    inquiry.aggregate = info.GetAggregate();
    inquiry.text = info.GetDescription();
    const BasicSignal *signal = info.GetSignal();
    if (signal) {
        if (inquiry.text.empty())
            inquiry.text = signal->GetDescription();
        inquiry.unit = info.GetUnit();
        inquiry.decimals = info.GetDecimals() >= 0 ? info.GetDecimals() : signal->GetDecimals();
    }
    if (inquiry.text.empty())
        inquiry.text = info.GetName();
    inquiry.result = order.core ? order.core->GetHistory().FindSource(info.GetSignalLink(),
                                                                      order.reader, inquiry.source)
                                : Result(&info, Result::NotAvailable, "no station runs");
    return inquiry;
}

Result SignalInquiry::ReadFacts(const std::vector<ReportSpan> &rows, Timestamp now,
                                std::vector<SignalFacts> &facts,
                                const std::atomic<bool> &isCancelled) const
{
    RowAggregator sums(rows, threshold);
    Result read = result;
    if (source && !rows.empty()) {
        const auto add = [&sums](const HistoryColumn &column, std::size_t i) {
            sums.Add(column.times[i], column.numbers[i], column.qualities[i]);
            return true;
        };
        read = readAll(*source, {rows.front().begin, rows.back().end}, add, isCancelled);
    }
    // What could not be read is not known: the last sample that was read does not stand for it.
    facts = sums.Finish(read ? now : 0);
    return read;
}

void SignalInquiry::ReadSamples(const ReportSpan &span, ReportTable &table,
                                const std::atomic<bool> &isCancelled) const
{
    table.AddTexts("time");
    table.AddNumbers("value", decimals);
    table.AddTexts("quality");
    table.Note(result);
    if (!source || span.IsEmpty())
        return;
    const auto add = [&table, &span](const HistoryColumn &column, std::size_t i) {
        if (column.times[i] < span.begin)
            return true;
        if (table.rows == ReportTable::MostRows)
            return false;
        table.columns[0].texts.push_back(ReportTimeText(column.times[i]));
        table.columns[1].numbers.push_back(column.numbers[i]);
        table.columns[2].texts.emplace_back(QualityName(column.qualities[i]));
        ++table.rows;
        return true;
    };
    table.Note(readAll(*source, span, add, isCancelled));
}

std::vector<ReportSpan> RowsUntilNow(const ReportOrder &order, int step, ReportTable &table)
{
    const ReportSpan past{order.span.begin, std::min(order.span.end, order.now)};
    std::vector<ReportSpan> rows = PartSpan(past, enReportStep(step), order.shifts);
    if (!rows.empty() && rows.back().end < past.end)
        table.Note(Result(Result::LimitExceeded, "too many rows"));
    return rows;
}

} // namespace Nodes
