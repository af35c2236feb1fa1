#pragma once

#include "nodes/journal/JournalSearch.h"

#include <memory>
#include <string>

namespace Records {

struct RecordsOptions;

/// The journal that the command line names; it is only read.
class OpenedJournal
{
public:
    [[nodiscard]] Nodes::Result open(const RecordsOptions &options);

    Nodes::JournalSearch &search() { return *m_search; }
    /// Without a password.
    std::string shownLocation() const;

private:
    std::string m_location;
    std::unique_ptr<Nodes::JournalSearch> m_search;
};

} // namespace Records
