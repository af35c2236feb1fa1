#include "nodes/archive/HistoryJob.h"

#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/HistorySource.h"

#include <utility>

namespace Nodes {

HistoryJob::HistoryJob(const HistoryRequest &request, std::vector<Item> items, Slot slot)
    : m_request(request), m_items(std::move(items)), m_slot(std::move(slot))
{
}

void HistoryJob::Cancel()
{
    m_isInterrupted = true;
    m_isDone = true;
    const std::lock_guard lock(m_mutex);
    m_slot = nullptr;
}

bool HistoryJob::ReadNext()
{
    if (m_columns.size() < m_items.size())
        m_columns.push_back(read(m_items[m_columns.size()]));
    return m_columns.size() == m_items.size();
}

std::shared_ptr<const HistoryColumn> HistoryJob::read(const Item &item) const
{
    auto column = std::make_shared<HistoryColumn>();
    column->result = item.result;
    if (item.source) {
        HistoryColumnBuilder builder(m_request.from, m_request.to, m_request.maxPoints);
        const Result result = item.source->Read(builder, m_isInterrupted);
        *column = builder.Take();
        column->result = result;
    }
    column->signal = item.signal;
    return column;
}

void HistoryJob::Answer(const Result &result)
{
    auto answer = std::make_shared<HistoryAnswer>();
    answer->result = result;
    answer->columns = std::move(m_columns);
    for (const auto &column : answer->columns) {
        if (column->result == Result::Cancelled)
            answer->result = column->result; // of the closing that came while it was read
    }
    for (std::size_t i = answer->columns.size(); i < m_items.size(); ++i) {
        auto unread = std::make_shared<HistoryColumn>();
        unread->signal = m_items[i].signal;
        unread->result = result;
        answer->columns.push_back(std::move(unread));
    }
    // Askers keep their jobs: sources must not live on in them and be taken for the next session's.
    m_items.clear();
    const std::lock_guard lock(m_mutex);
    m_isDone = true;
    if (const Slot slot = std::exchange(m_slot, nullptr))
        slot(answer);
}

} // namespace Nodes
