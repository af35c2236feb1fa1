#pragma once

#include "apps/records/OpenedArchive.h"

#include "nodes/archive/store/ArchiveFinding.h"

#include <string>

namespace Records {

struct RecordsOptions;

/// `records archive verify`.
class VerifyCommand
{
public:
    explicit VerifyCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when everything is sound; else what is not was told.
    [[nodiscard]] bool run();

    /// One finding as a line: where, whose, when, what.
    static std::string describe(const Nodes::ArchiveFinding &finding);

private:
    std::string asText(const Nodes::ArchiveFindings &findings);
    std::string asJson(const Nodes::ArchiveFindings &findings) const;

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
};

} // namespace Records
