#pragma once

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/archive/store/ArchiveStore.h"
#include "nodes/archive/store/SamplePacket.h"
#include "nodes/storage/records/Recorder.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

/// Groups of samples that are known by their numbers, so that what an archive has of them can be
/// told exactly, and what it must not have.
struct CountedSamples
{
    static constexpr int Signals = 3;
    static constexpr int PerGroup = 200; ///< samples of one signal
    static constexpr Nodes::Timestamp Begin = 1700000000000000;
    static constexpr Nodes::Timestamp Step = 1000;

    static Nodes::ArchiveSignalKey Key(int signal)
    {
        Nodes::ArchiveSignalKey key;
        key.source = {{"counted", 1, "Станция"}, static_cast<unsigned long>(100 + signal), "s"};
        return key;
    }
    /// The last sample of a group comes with the next one but two: late, among those stored before.
    static std::string Packet(std::uint64_t group)
    {
        Nodes::SamplePacket packet;
        for (int s = 0; s < Signals; ++s) {
            Nodes::SamplePacket::Part part;
            part.signal = Key(s);
            for (int i = 0; i < PerGroup - 1; ++i)
                add(part.run, group * PerGroup + std::uint64_t(i));
            if (group >= 3)
                add(part.run, (group - 3) * PerGroup + PerGroup - 1);
            packet.parts.push_back(std::move(part));
        }
        return packet.Pack();
    }
    /// How many whole groups a signal has, from the first on; throws when anything is missing among
    /// them, wrong, twice or out of order.
    static std::uint64_t Groups(Nodes::ArchiveReader &reader, int signal)
    {
        const std::atomic<bool> isCancelled{false};
        std::vector<std::uint64_t> numbers;
        const Nodes::Result visited = reader.Visit(
            Key(signal), 0, Begin * 2,
            [&](const Nodes::SampleRun &run) {
                for (std::size_t i = 0; i < run.Size(); ++i) {
                    numbers.push_back(std::uint64_t((run.times[i] - Begin) / Step));
                    if (run.numbers[i] != valueOf(numbers.back()))
                        throw std::logic_error("a wrong value");
                }
                return true;
            },
            isCancelled);
        if (visited == Nodes::Result::NotFound)
            return 0;
        if (!visited)
            throw std::logic_error(visited.ToString());
        const std::uint64_t groups = numbers.empty() ? 0 : numbers.back() / PerGroup + 1;
        std::vector<std::uint64_t> expected;
        for (std::uint64_t n = 0; n < groups * PerGroup; ++n) {
            const bool isLate = n % PerGroup == PerGroup - 1;
            if (!isLate || n / PerGroup + 3 < groups)
                expected.push_back(n);
        }
        if (numbers != expected)
            throw std::logic_error(
                "samples are missing or there twice: " + std::to_string(numbers.size()) + " of " +
                std::to_string(expected.size()));
        return groups;
    }
    static std::unique_ptr<Nodes::ArchiveReader> Reader(const std::string &location)
    {
        std::unique_ptr<Nodes::ArchiveReader> reader;
        if (const Nodes::Result made = Nodes::ArchiveReaders().Make(location, reader); !made)
            throw std::logic_error(made.ToString());
        return reader;
    }
    /// Whole groups of all signals; throws too when Verify finds something.
    static std::uint64_t Stored(const std::string &location)
    {
        const auto reader = Reader(location);
        const std::atomic<bool> isCancelled{false};
        Nodes::ArchiveFindings findings;
        const Nodes::Result verified = reader->Verify(findings, isCancelled);
        if (verified == Nodes::Result::NotFound)
            return 0;
        if (!verified)
            throw std::logic_error(verified.ToString());
        if (!findings.empty())
            throw std::logic_error(findings.front().place + ": " + findings.front().text);
        const std::uint64_t groups = Groups(*reader, 0);
        for (int s = 1; s < Signals; ++s) {
            if (Groups(*reader, s) != groups)
                throw std::logic_error("a packet was stored in part");
        }
        return groups;
    }

    static std::shared_ptr<Nodes::Recorder> MakeRecorder(const Nodes::Recorder::Limits &limits = {})
    {
        return std::make_shared<Nodes::Recorder>(
            Nodes::SamplePacket::Format(), limits,
            Nodes::RecordHooks{{}, [](const Nodes::RecordFinding &) { return std::string(); }});
    }
    [[nodiscard]] static Nodes::Result Open(Nodes::Recorder &recorder, const std::string &location,
                                            const std::string &spill)
    {
        std::unique_ptr<Nodes::ArchiveStore> store;
        const Nodes::Result made = Nodes::ArchiveStores().Make(location, store);
        return made ? recorder.Open(std::move(store), spill) : made;
    }

private:
    static double valueOf(std::uint64_t number) { return double(number % 977) / 4; }
    static void add(Nodes::SampleRun &run, std::uint64_t number)
    {
        run.Add(Begin + Nodes::Timestamp(number) * Step, valueOf(number), Nodes::Quality::Good);
    }
};
