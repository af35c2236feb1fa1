#include "apps/station/GeneratedHistory.h"

#include "apps/common/history/ArchiveWriter.h"
#include "apps/common/history/ArchivedSignals.h"
#include "apps/common/history/HistoryGenerator.h"

#include "nodes/archive/systemArchiver.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"
#include "nodes/values/NodeTime.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include <cstdio>
#include <memory>

namespace Station {

namespace {

using Host::HistoryGenerator;
using Nodes::Result;
using Nodes::Timestamp;

constexpr Timestamp second = 1000000;
constexpr Timestamp hour = 3600 * second;
constexpr Timestamp day = 24 * hour;

std::string spanText(Timestamp span)
{
    if (span % day == 0)
        return std::to_string(span / day) + " сут";
    if (span % hour == 0)
        return std::to_string(span / hour) + " ч";
    return std::to_string(span / (60 * second)) + " мин";
}

std::string localText(Timestamp time)
{
    return Nodes::NodeTime(boost::posix_time::from_time_t(time / second))
        .ToString("%d.%m.%Y %H:%M");
}

} // namespace

Result GeneratedHistory::make(Timestamp span)
{
    const Nodes::systemArchiver *archiver = m_core.GetSystemArchiver();
    if (!archiver)
        return Result(Result::NotFound, "the project has no archive (\"archiver\") to fill");
    std::string location;
    std::vector<Nodes::ArchivedSignal> known;
    Host::HistoryProfiles profiles;
    Host::ArchiveWriter writer;
    Result result = archiver->FindLocation(location);
    if (result)
        result = profiles.load(m_core.GetProjectPath());
    // The writer makes an archive that is not there.
    if (result)
        result = writer.open(location);
    std::unique_ptr<Nodes::ArchiveReader> reader;
    if (result)
        result = Nodes::ArchiveReaders().Make(location, reader);
    if (result)
        result = reader->ListSignals(known);
    if (!result)
        return result;
    HistoryGenerator generator(writer, m_core.GetRecordHome(), profiles);
    HistoryGenerator::Wish wish;
    wish.to = Nodes::Clock::Current().Now();
    wish.from = wish.to - span;
    HistoryGenerator::Outcome outcome;
    result = generator.generate(
        Host::archivedSignals(m_core), known, wish, [](std::size_t, std::size_t) {}, outcome);
    const Result finished = writer.finish();
    std::printf("station: %llu samples were generated for %zu signals; %zu had a past already, "
                "which stays as it is\n",
                static_cast<unsigned long long>(writer.written()), outcome.filled,
                outcome.passedOver);
    std::fflush(stdout);
    if (writer.written() > 0)
        m_entry = "История за " + spanText(span) +
                  " сгенерирована, это не измерения: " + localText(wish.from) + " – " +
                  localText(wish.to) + ", сигналов: " + std::to_string(outcome.filled) +
                  ", значений: " + std::to_string(writer.written());
    return result ? finished : result;
}

void GeneratedHistory::enter() const
{
    if (!m_entry.empty())
        (void)m_core.StoreMessage(Nodes::LevelInformation, m_entry,
                                  m_core.GetSystemArchiver()->GetNodeLink());
}

} // namespace Station
