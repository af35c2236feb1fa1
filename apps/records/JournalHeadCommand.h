#pragma once

#include "apps/records/OpenedJournal.h"

namespace Records {

struct RecordsOptions;

/// `records journal head`.
class JournalHeadCommand
{
public:
    explicit JournalHeadCommand(const RecordsOptions &options) : m_options(options) {}

    [[nodiscard]] bool run();

private:
    const RecordsOptions &m_options;
    OpenedJournal m_journal;
};

} // namespace Records
