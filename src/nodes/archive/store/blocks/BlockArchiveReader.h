#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/blocks/BlockReading.h"

#include <memory>

namespace Nodes {

class ArchiveConnection;

/// Reader of an archive whose tables are those of ArchiveRows.
class NODES_EXPORT BlockArchiveReader : public ArchiveReader
{
public:
    explicit BlockArchiveReader(std::unique_ptr<ArchiveConnection> connection);
    ~BlockArchiveReader() override;

    const std::string &GetLocation() const override;
    [[nodiscard]] Result ListSignals(std::vector<ArchivedSignal> &found) override;
    [[nodiscard]] Result Read(const ArchiveSignalKey &signal, HistoryColumnBuilder &into,
                              const std::atomic<bool> &isCancelled) override;
    [[nodiscard]] Result Visit(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                               const Visitor &visitor,
                               const std::atomic<bool> &isCancelled) override;
    [[nodiscard]] Result ReadBuckets(const ArchiveSignalKey &signal, Timestamp from, Timestamp to,
                                     std::size_t count, std::vector<ArchiveBucket> &buckets,
                                     const std::atomic<bool> &isCancelled) override;
    [[nodiscard]] Result Verify(ArchiveFindings &findings,
                                const std::atomic<bool> &isCancelled) override;
    [[nodiscard]] Result Repair(ArchiveFindings &findings,
                                const std::atomic<bool> &isCancelled) override;
    [[nodiscard]] Result Backup(const std::string &to, const std::function<bool()> &step) override;

private:
    template <class Work> Result run(Work work);
    template <class Work> Result runFor(const ArchiveSignalKey &key, Work work);
    [[nodiscard]] Result readPortion(const ArchiveSignalKey &signal, Timestamp &from, Timestamp to,
                                     const std::atomic<bool> &isCancelled,
                                     std::vector<SampleRun> &portion, std::size_t &damaged);
    [[nodiscard]] Result readSignals(std::vector<StoredSignal> &found);
    [[nodiscard]] Result verifySignals(ArchiveFindings &findings,
                                       const std::atomic<bool> &isCancelled);

    const std::unique_ptr<ArchiveConnection> m_connection;
    BlockReading m_reading;
};

} // namespace Nodes
