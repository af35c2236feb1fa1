#include "nodes/archive/store/blocks/LogTails.h"

namespace Nodes {

void LogTails::Forget()
{
    m_first = 0;
    m_last = 0;
    m_tails.clear();
    m_log.clear();
}

Result LogTails::refresh()
{
    std::int64_t first = 0;
    const Result asked = m_rows.FirstLogRow(first);
    if (!asked)
        return asked;
    if (first != m_first)
        Forget(); // it was packed: what is left is little
    m_first = first;
    return m_rows.ReadLog(m_last, [&](std::int64_t number, const std::string &bytes) {
        m_last = number;
        BlockBytes::LogRow &row = m_log.emplace_back();
        if (!BlockBytes::ReadLog(bytes, row))
            return; // Verify's to tell
        for (const auto &[signal, part] : row.parts)
            m_tails[signal].parts.emplace_back(&row, part);
    });
}

Result LogTails::Find(const StoredSignal &signal, SampleRun &tail)
{
    tail.Clear();
    const Result result = refresh();
    const auto found = m_tails.find(signal.number);
    if (!result || found == m_tails.end())
        return result;
    Tail &known = found->second;
    SampleRun run;
    for (; known.unpacked < known.parts.size(); ++known.unpacked) {
        const auto &[row, part] = known.parts[known.unpacked];
        if (BlockBytes::ReadLogPart(part, row->base, run))
            known.run.Append(run);
    }
    known.run.Sort();
    known.run.EraseFront(known.run.LowerBound(
        signal.sealedTo == StoredSignal::Never ? StoredSignal::Never : signal.sealedTo + 1));
    tail = known.run;
    return result;
}

std::size_t LogTails::BytesOf(std::int64_t signal) const
{
    std::size_t bytes = 0;
    if (const auto found = m_tails.find(signal); found != m_tails.end()) {
        for (const auto &part : found->second.parts)
            bytes += part.second.size();
    }
    return bytes;
}

} // namespace Nodes
