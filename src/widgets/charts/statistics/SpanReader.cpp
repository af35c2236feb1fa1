#include "widgets/charts/statistics/SpanReader.h"

#include "widgets/charts/aids/HistoryAsker.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/HistoryRequest.h"

#include <algorithm>
#include <limits>

namespace Widgets {

namespace {

constexpr std::size_t pieceSamples = 50000;

} // namespace

SpanReader::SpanReader(QObject *parent) : QObject(parent), m_asker(new HistoryAsker(this))
{
    connect(m_asker, &HistoryAsker::answered, this, &SpanReader::onAnswered);
}

void SpanReader::read(Nodes::systemCore *model, std::vector<Task> tasks, double from, double to)
{
    cancel();
    m_model = model;
    m_tasks = std::move(tasks);
    m_from = from;
    m_to = to;
    begin();
}

void SpanReader::cancel()
{
    m_asker->cancel();
    m_tasks.clear();
}

void SpanReader::begin()
{
    if (m_tasks.empty())
        return;
    const Task &task = m_tasks.back();
    m_sums.emplace(m_from, m_to, task.join);
    m_next = Nodes::Timestamp(ChartTime::toUtc(m_from)) * 1000;
    const double pieces = std::max(1.0, double(task.samples) / double(pieceSamples));
    m_piece = std::max<Nodes::Timestamp>(1000, Nodes::Timestamp((m_to - m_from) * 1000 / pieces));
    m_last = std::numeric_limits<Nodes::Timestamp>::min();
    askNext();
}

void SpanReader::askNext()
{
    // A cursor stands between two milliseconds where a sample does.
    const Nodes::Timestamp last = Nodes::Timestamp(ChartTime::toUtc(m_to) + 1) * 1000;
    m_end = std::min(m_next + m_piece, last);
    Nodes::HistoryRequest request;
    request.from = m_next;
    request.to = m_end;
    request.nodes = {m_tasks.back().signal};
    request.priority = Nodes::HistoryPriority::Background;
    if (!m_asker->ask(m_model, request))
        cancel(); // what stands there stays, and says that it is not exact
}

void SpanReader::onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer)
{
    if (m_tasks.empty())
        return;
    const Nodes::HistoryColumn &column = *answer->columns.front();
    if (!answer->result || !column.result)
        return cancel();
    for (std::size_t i = 0; i < column.times.size(); ++i) {
        if (column.times[i] <= m_last)
            continue; // the ends of pieces belong to two of them
        m_last = column.times[i];
        m_sums->add(ChartTime::toX(m_last), column.numbers[i], column.qualities[i]);
    }
    m_next = m_end;
    if (ChartTime::toX(m_next) <= m_to)
        return askNext();
    const Task task = m_tasks.back();
    m_tasks.pop_back();
    m_sums->hold(task.heldUntil);
    const SpanStatistics found = m_sums->finish();
    begin();
    emit completed(task.row, found);
}

} // namespace Widgets
