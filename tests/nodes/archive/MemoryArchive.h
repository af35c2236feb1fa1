#pragma once

#include "nodes/ManualClock.h"
#include "nodes/archive/HistoryColumnBuilder.h"
#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"

#include <map>
#include <mutex>
#include <set>

/// What stores at "memory:" hold in this process: the first sample of each time, as a store
/// promises; it may be taken away and given back.
struct MemoryArchive
{
    using Samples = std::map<Nodes::Timestamp, Nodes::SampleRun>; // of one sample each

    static MemoryArchive &Use()
    {
        static MemoryArchive archive;
        [[maybe_unused]] static const bool isKnown = archive.provide();
        const std::lock_guard lock(archive.mutex);
        archive.samplesOf.clear();
        archive.keys.clear();
        archive.isAway = false;
        archive.reads = 0;
        archive.hangs = 0;
        return archive;
    }
    bool provide();
    Nodes::Result check() const
    {
        return isAway ? Nodes::Result(Nodes::Result::StorageError, "memory: away")
                      : Nodes::Result();
    }
    void setAway(bool away)
    {
        const std::lock_guard lock(mutex);
        isAway = away;
    }
    std::size_t count(const Nodes::ArchiveSignalKey &signal)
    {
        const std::lock_guard lock(mutex);
        return samplesOf[signal].size();
    }

    std::mutex mutex;
    std::map<Nodes::ArchiveSignalKey, Samples> samplesOf;
    std::set<std::uint64_t> keys; // of packets
    bool isAway = false;
    int reads = 0;
    Nodes::Timestamp hangs = 0; // how long a reading takes
};

class MemoryArchiveStore : public Nodes::ArchiveStore
{
public:
    explicit MemoryArchiveStore(MemoryArchive &archive) : m_archive(archive) {}
    const std::string &GetLocation() const override { return m_location; }
    Nodes::Result Open(Nodes::StoreOpening &) override
    {
        const std::lock_guard lock(m_archive.mutex);
        const Nodes::Result result = m_archive.check();
        m_isOpen = result.IsSuccess();
        return result;
    }
    void Close() override { m_isOpen = false; }
    bool IsOpen() const override { return m_isOpen; }
    bool NoticeMove() override { return false; }
    void SetRetention(const Nodes::ArchiveRetentionRules &) override {}
    Nodes::Result Write(const Nodes::Records &records, std::vector<std::uint64_t> &numbers) override
    {
        const std::lock_guard lock(m_archive.mutex);
        const Nodes::Result result = m_archive.check();
        m_isOpen = result.IsSuccess();
        for (std::size_t i = 0; result && i < records.size(); ++i) {
            const auto packet = Nodes::SamplePacket::Unpack(records[i].bytes);
            const bool isNew = packet && m_archive.keys.insert(records[i].key).second;
            numbers.push_back(isNew ? 1 : 0);
            for (std::size_t p = 0; isNew && p < packet->parts.size(); ++p)
                take(packet->parts[p]);
        }
        return result;
    }

private:
    void take(const Nodes::SamplePacket::Part &part)
    {
        MemoryArchive::Samples &samples = m_archive.samplesOf[part.signal];
        for (std::size_t i = 0; i < part.run.Size(); ++i) {
            Nodes::SampleRun one;
            one.Append(part.run, i, i + 1);
            samples.insert({one.times.front(), one});
        }
    }

    MemoryArchive &m_archive;
    const std::string m_location = "memory:";
    bool m_isOpen = false;
};

class MemoryArchiveReader : public Nodes::ArchiveReader
{
public:
    using Result = Nodes::Result;
    using Key = Nodes::ArchiveSignalKey;
    using Flag = std::atomic<bool>;

    explicit MemoryArchiveReader(MemoryArchive &archive) : m_archive(archive) {}
    const std::string &GetLocation() const override { return m_location; }
    Result ListSignals(std::vector<Nodes::ArchivedSignal> &found) override
    {
        const std::lock_guard lock(m_archive.mutex);
        for (const auto &[key, samples] : m_archive.samplesOf) {
            if (!samples.empty())
                found.push_back(
                    {key, samples.begin()->first, samples.rbegin()->first, samples.size()});
        }
        return m_archive.check();
    }
    Result Read(const Key &signal, Nodes::HistoryColumnBuilder &into, const Flag &) override
    {
        const std::lock_guard lock(m_archive.mutex);
        ++m_archive.reads;
        ManualClock::Use().Advance(m_archive.hangs);
        const auto found = m_archive.samplesOf.find(signal);
        if (!m_archive.check() || found == m_archive.samplesOf.end())
            return m_archive.check() ? Result(Result::NotFound) : m_archive.check();
        for (const auto &[time, one] : found->second)
            into.Add(time, one.numbers.front(), one.qualities.front());
        return Result();
    }
    Result Visit(const Key &signal, Nodes::Timestamp from, Nodes::Timestamp to,
                 const Visitor &visitor, const Flag &) override
    {
        const std::lock_guard lock(m_archive.mutex);
        const MemoryArchive::Samples &all = m_archive.samplesOf[signal];
        for (auto at = all.lower_bound(from); at != all.end() && at->first <= to; ++at) {
            if (!visitor(at->second))
                break;
        }
        return m_archive.check();
    }
    Result ReadBuckets(const Key &, Nodes::Timestamp, Nodes::Timestamp, std::size_t,
                       std::vector<Nodes::ArchiveBucket> &, const Flag &) override
    {
        return Result(Result::NotAvailable);
    }
    Result Verify(Nodes::ArchiveFindings &, const Flag &) override { return Result(); }
    Result Repair(Nodes::ArchiveFindings &, const Flag &) override { return Result(); }
    Result Backup(const std::string &, const std::function<bool()> &) override
    {
        return Result(Result::NotAvailable);
    }

private:
    MemoryArchive &m_archive;
    const std::string m_location = "memory:";
};

inline bool MemoryArchive::provide()
{
    Nodes::ArchiveStores().Add("memory", [this](const std::string &) {
        return std::make_unique<MemoryArchiveStore>(*this);
    });
    Nodes::ArchiveReaders().Add("memory", [this](const std::string &) {
        return std::make_unique<MemoryArchiveReader>(*this);
    });
    return true;
}
