#pragma once

#include "apps/records/OpenedJournal.h"

namespace Records {

struct RecordsOptions;

/// `records journal verify`.
class JournalVerifyCommand
{
public:
    explicit JournalVerifyCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when every row is as it was written; else the first one that is not was told.
    [[nodiscard]] bool run();

private:
    const RecordsOptions &m_options;
    OpenedJournal m_journal;
};

} // namespace Records
