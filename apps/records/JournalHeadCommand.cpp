#include "apps/records/JournalHeadCommand.h"

#include "apps/records/JournalReceipt.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"

namespace Records {

using Nodes::Result;

bool JournalHeadCommand::run()
{
    Nodes::JournalEnds ends;
    Result result = m_journal.open(m_options);
    if (result)
        result = m_journal.search().ReadEnds(ends);
    if (result && ends.head.id == 0)
        result = Result(Result::NotFound, "the journal \"" + m_journal.shownLocation() +
                                              "\" has no rows: there is nothing to keep yet");
    OutputFile output("");
    if (!Message::check(result) || !Message::check(output.open()))
        return false;
    output.write(JournalReceipt::format(ends.head) + "\n");
    return Message::check(output.finish());
}

} // namespace Records
