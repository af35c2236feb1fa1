#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/archive/store/blocks/ChunkSealer.h"
#include "nodes/archive/store/blocks/LateSamples.h"
#include "nodes/archive/store/blocks/StoredKeys.h"
#include "nodes/storage/records/Record.h"

#include <deque>
#include <map>
#include <vector>

namespace Nodes {

/// Takes packets of samples into the tables of an archive, whatever database they are in.
///
/// New samples are appended to a log: one small row a transaction, whatever the number of signals.
/// They are in memory too, as the tails of the signals, until a tail fills a chunk or the log gets
/// long; then they are packed. Samples that are older than what is packed of their signal go into
/// the chunks at once. So what is known of a signal is its chunks and what the log has later than
/// StoredSignal::sealedTo. One thread; every call within a transaction of the caller's.
class NODES_EXPORT ArchiveEngine
{
public:
    explicit ArchiveEngine(ArchiveTables &tables);
    ~ArchiveEngine();

    /// After a transaction that was rolled back, and when the tables may be others: what is in
    /// memory is read anew by the next call.
    void Forget();
    /// As RecordStore::Write.
    [[nodiscard]] Result Write(const Records &records, std::vector<std::uint64_t> &numbers);
    /// Whether the log is long enough to be packed.
    bool NeedsPacking() const;
    /// Packs the tails of some signals; the log is emptied when all are done.
    [[nodiscard]] Result Pack(bool &hasMore);

private:
    struct Signal
    {
        StoredSignal stored;
        SampleRun tail;
        SampleRun fresh; // of this transaction
        SampleRun late;  // likewise
        bool isTouched = false;
        bool isChanged = false;
    };

    [[nodiscard]] Result load();
    [[nodiscard]] Result find(const ArchiveSignalKey &key, Signal *&signal);
    [[nodiscard]] Result take(const Record &record);
    [[nodiscard]] Result take(SamplePacket::Part &part);
    [[nodiscard]] Result settle(Signal &signal);
    [[nodiscard]] Result log(const std::vector<Signal *> &touched, std::int64_t &row);
    [[nodiscard]] Result appendLog(const std::string &bytes, std::int64_t &row);
    [[nodiscard]] Result finishPacking();
    [[nodiscard]] Result saveDamagedRows();
    Timestamp sealBefore(const SampleRun &tail) const;

    ArchiveTables &m_tables;
    ChunkSealer m_sealer;
    LateSamples m_late;
    StoredKeys m_keys;
    bool m_isLoaded = false;
    std::deque<Signal> m_signals; // which stay where they are
    std::map<ArchiveSignalKey, Signal *> m_byKey;
    std::vector<Signal *> m_touched; // by the transaction
    std::int64_t m_lastRow = 0;      // of the log
    std::size_t m_logBytes = 0;
    std::size_t m_logRows = 0;
    std::size_t m_tailWeight = 0;
    bool m_isLogDamaged = false;
    std::vector<Signal *> m_toPack;
};

} // namespace Nodes
