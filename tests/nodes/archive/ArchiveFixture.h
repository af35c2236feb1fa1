#pragma once

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"

#include <QtTest>

#include <atomic>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// An archive in a directory of its own, or at another location, and readers of it.
class ArchiveFixture
{
public:
    explicit ArchiveFixture(const std::string &elsewhere = {})
        : location(elsewhere.empty() ? file() : elsewhere)
    {
        open();
    }

    static Nodes::ArchiveSignalKey key(unsigned long node)
    {
        Nodes::ArchiveSignalKey key;
        key.source.home = {"7d1e0f2c-0000-4000-8000-000000000001", 1, "Станция"};
        key.source.node = node;
        key.source.name = "Котёл/Сигнал " + std::to_string(node);
        key.unit = "°C";
        return key;
    }

    std::string file() const { return directory.filePath("archive.sqlite").toStdString(); }

    void open()
    {
        store.reset();
        QVERIFY(Nodes::ArchiveStores().Make(location, store));
        Nodes::StoreOpening opening;
        const Nodes::Result opened = store->Open(opening);
        QVERIFY2(opened.IsSuccess(), opened.ToString().c_str());
        setAside = opening.setAside;
    }

    std::unique_ptr<Nodes::ArchiveReader> reader() const
    {
        std::unique_ptr<Nodes::ArchiveReader> made;
        return Nodes::ArchiveReaders().Make(location, made) ? std::move(made) : nullptr;
    }

    Nodes::Record record(const Nodes::SamplePacket &packet)
    {
        return {++lastKey, 1, packet.Pack()};
    }

    void write(const Nodes::Records &records)
    {
        std::vector<std::uint64_t> numbers;
        const Nodes::Result written = store->Write(records, numbers);
        QVERIFY2(written.IsSuccess(), written.ToString().c_str());
    }

    void write(unsigned long node, Nodes::SampleRun run, bool isGenerated = false)
    {
        Nodes::SamplePacket packet;
        packet.parts.push_back({key(node), std::move(run), isGenerated});
        write({record(packet)});
    }

    /// Steps of upkeep until there is no more to do.
    void tend()
    {
        Nodes::RecordStore::Upkeep upkeep;
        do {
            upkeep = {};
            const Nodes::Result tended = store->Tend(upkeep);
            QVERIFY2(tended.IsSuccess(), tended.ToString().c_str());
        } while (upkeep.hasMore);
    }

    Nodes::SampleRun stored(unsigned long node, Nodes::Timestamp from = 0,
                            Nodes::Timestamp to = INT64_MAX)
    {
        Nodes::SampleRun all;
        (void)reader()->Visit(
            key(node), from, to,
            [&](const Nodes::SampleRun &run) {
                all.Append(run);
                return true;
            },
            never);
        return all;
    }

    Nodes::ArchiveFindings findings()
    {
        Nodes::ArchiveFindings found;
        const Nodes::Result verified = reader()->Verify(found, never);
        if (!verified)
            found.push_back({{}, 0, 0, "verify", verified.ToString()});
        return found;
    }

    QTemporaryDir directory;
    const std::string location;
    std::unique_ptr<Nodes::ArchiveStore> store;
    std::string setAside;
    std::uint64_t lastKey = 1000;
    const std::atomic<bool> never{false};
};
