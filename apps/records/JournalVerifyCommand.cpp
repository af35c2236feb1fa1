#include "apps/records/JournalVerifyCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/JournalReceipt.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"

namespace Records {

using Nodes::Result;

bool JournalVerifyCommand::run()
{
    Nodes::JournalEnds ends;
    OutputFile output("");
    Result result = m_journal.open(m_options);
    if (result) {
        const Result found = m_journal.search().ReadEnds(ends);
        result = m_journal.search().Verify(m_options.receipts, [&](std::uint64_t row) {
            Message::progress("row " + std::to_string(row) + " of " + std::to_string(ends.head.id));
            return !Host::StopRequest::isMade();
        });
        result = result ? found : result;
    }
    Message::progress("");
    if (result == Result::Failed) {
        if (Message::check(output.open()))
            output.write(result.GetDetail() + "\n");
        return Message::check(output.finish()) && false;
    }
    if (!Message::check(result) || !Message::check(output.open()))
        return false;
    const std::uint64_t first = ends.anchor.id + 1;
    output.write(ends.head.id < first ? "sound: no rows\n"
                                      : "sound: rows " + std::to_string(first) + " to " +
                                            JournalReceipt::format(ends.head) + "\n");
    return Message::check(output.finish());
}

} // namespace Records
