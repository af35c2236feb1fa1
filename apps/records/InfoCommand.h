#pragma once

#include "apps/records/OpenedArchive.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Records {

struct RecordsOptions;

/// `records archive info`.
class InfoCommand
{
public:
    explicit InfoCommand(const RecordsOptions &options) : m_options(options) {}

    /// True when all was done; else why not was told.
    [[nodiscard]] bool run();

private:
    std::string asTable() const;
    std::string asJson() const;
    std::string jsonOf(const Nodes::ArchivedSignal &signal) const;
    std::string remarkOn(const Nodes::ArchivedSignal &signal) const;
    bool isDeleted(const Nodes::ArchivedSignal &signal) const;
    std::uint64_t fileBytes() const;
    /// 0 where it is no file.
    std::int64_t formatVersion() const;

    const RecordsOptions &m_options;
    OpenedArchive m_archive;
    std::vector<Nodes::ArchivedSignal> m_signals;
    std::uint64_t m_samples = 0;
    std::uint64_t m_bytes = 0;
};

} // namespace Records
