#include "apps/records/JournalExportCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/JournalTableWriter.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"

namespace Records {

using Nodes::Result;

bool JournalExportCommand::run()
{
    OutputFile output(m_options.output);
    Result result = m_journal.open(m_options);
    if (result)
        result = output.open();
    if (!Message::check(result))
        return false;
    result = writeRows(output);
    return output.conclude(result, m_rows);
}

Result JournalExportCommand::writeRows(OutputFile &output)
{
    JournalTableWriter writer(output);
    writer.writeHeader();
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    const Nodes::Timestamp end = m_options.to ? *m_options.to + 1 : 0;
    const Result found = m_journal.search().FindSpan(m_options.from, end, first, last);
    if (found == Result::NotFound)
        return Result();
    if (!found)
        return found;
    std::uint64_t outside = 0;
    const Result visited = m_journal.search().VisitRows(
        first, last,
        [&](const Nodes::JournalRow &row, const std::string &previous, const std::string &hash) {
            const Nodes::Timestamp time = row.event.time;
            outside += time < m_options.from || (end != 0 && time >= end) ? 1 : 0;
            writer.write(row, previous, hash);
            ++m_rows;
            return !output.hasFailed() && !Host::StopRequest::isMade();
        });
    if (visited && outside > 0)
        Message::tell(std::to_string(outside) +
                      " rows between these are of another time (a clock was set): they are in the "
                      "table, for the chain goes through them");
    return visited;
}

} // namespace Records
