#pragma once

#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/blocks/BlockReading.h"
#include "nodes/storage/records/Record.h"

#include <functional>
#include <memory>
#include <string>

namespace Nodes {

struct SamplePacket;

/// Copies an archive sample by sample into a new one of any kind. One thread, within one
/// transaction of reading.
class PostgresBackup
{
public:
    explicit PostgresBackup(ArchiveRows &from) : m_from(from), m_reading(from) {}

    /// As ArchiveReader::Backup.
    [[nodiscard]] Result Run(const std::string &to, const std::function<bool()> &step);

private:
    [[nodiscard]] Result open(const std::string &to);
    [[nodiscard]] Result copy(const std::function<bool()> &step);
    [[nodiscard]] Result copy(const StoredSignal &signal, const std::function<bool()> &step);
    [[nodiscard]] Result store(const SamplePacket &packet);

    ArchiveRows &m_from;
    BlockReading m_reading;
    std::unique_ptr<ArchiveStore> m_target;
    std::uint64_t m_nextKey = 0;
};

} // namespace Nodes
