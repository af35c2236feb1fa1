#include "apps/records/ExportCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/ArchiveHomes.h"
#include "apps/records/MergedSamples.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/SampleTableWriter.h"

#include <algorithm>

namespace Records {

namespace {

using Nodes::Result;
using Nodes::Timestamp;

constexpr std::size_t bucketsAtOnce = 200000; // of all signals

} // namespace

bool ExportCommand::run()
{
    OutputFile output(m_options.output);
    Result result = m_archive.open(m_options);
    if (result)
        result = chooseSignals();
    if (result)
        result = output.open();
    if (!Message::check(result))
        return false;
    SampleTableWriter writer(output);
    result = m_options.points > 0 ? writeBuckets(output, writer) : writeSamples(output, writer);
    return output.conclude(result, m_rows);
}

Result ExportCommand::chooseSignals()
{
    const ArchiveHomes homes(m_archive.signals(), m_options, m_archive.project());
    std::vector<Nodes::ArchivedSignal> chosen;
    for (const Nodes::ArchivedSignal &signal : homes.signals()) {
        const auto &ids = m_options.signals;
        if (ids.empty() || std::count(ids.begin(), ids.end(), signal.key.source.node) > 0)
            chosen.push_back(signal);
    }
    const Result isClear = ArchiveHomes(chosen, m_options, m_archive.project()).requireOne();
    if (!isClear)
        return isClear;
    for (const unsigned long id : m_options.signals) {
        const bool isThere = std::any_of(chosen.begin(), chosen.end(), [id](const auto &signal) {
            return signal.key.source.node == id;
        });
        if (!isThere)
            return Result(Result::NotFound, "the archive has no signal " + std::to_string(id) +
                                                "; \"records archive info\" lists those it has");
    }
    for (const Nodes::ArchivedSignal &signal : chosen) {
        m_signals.push_back(signal.key);
        if (signal.last == 0)
            continue;
        m_first = m_first == 0 ? signal.first : std::min(m_first, signal.first);
        m_last = std::max(m_last, signal.last);
    }
    std::sort(m_signals.begin(), m_signals.end());
    return Result();
}

Result ExportCommand::writeSamples(OutputFile &output, SampleTableWriter &writer)
{
    writer.writeHeader();
    // Beside a running station there are newer ones by now.
    const Timestamp to = m_options.to.value_or(INT64_MAX - 1);
    MergedSamples samples(m_archive.reader(), m_signals);
    return samples.visit(
        m_options.from, to,
        [&](unsigned long signal, const Nodes::SampleRun &run, std::size_t index) {
            writer.write(signal, run, index);
            ++m_rows;
            return !output.hasFailed() && !Host::StopRequest::isMade();
        },
        Host::StopRequest::flag());
}

Result ExportCommand::writeBuckets(OutputFile &output, SampleTableWriter &writer)
{
    const Timestamp from = m_options.from > 0 ? m_options.from : m_first;
    const Timestamp to = m_options.to.value_or(m_last + 1);
    if (to <= from && !m_signals.empty())
        return Result(Result::InvalidArgument, "the time from --from to --to is empty");
    const auto points = Timestamp(m_options.points);
    if (points > to - from && !m_signals.empty())
        return Result(Result::InvalidArgument,
                      "--points: a bucket is a microsecond at least; ask for fewer");
    writer.writeBucketHeader();
    if (m_signals.empty())
        return Result();
    // Borders are those of the whole: rounding does not add up.
    const auto border = [&](Timestamp index) {
        return from + (to - from) / points * index + (to - from) % points * index / points;
    };
    const Timestamp block = std::max<Timestamp>(1, Timestamp(bucketsAtOnce / m_signals.size()));
    for (Timestamp index = 0; index < points && !output.hasFailed(); index += block) {
        const Timestamp end = std::min(points, index + block);
        const Result result =
            writeBlock(writer, border(index), border(end), std::size_t(end - index));
        if (!result)
            return result;
    }
    return Result();
}

Result ExportCommand::writeBlock(SampleTableWriter &writer, Timestamp from, Timestamp to,
                                 std::size_t count)
{
    std::vector<std::vector<Nodes::ArchiveBucket>> columns(m_signals.size());
    for (std::size_t i = 0; i < m_signals.size(); ++i) {
        const Result result = m_archive.reader().ReadBuckets(m_signals[i], from, to, count,
                                                             columns[i], Host::StopRequest::flag());
        if (!result)
            return result;
    }
    for (std::size_t bucket = 0; bucket < count; ++bucket) {
        for (std::size_t i = 0; i < m_signals.size(); ++i) {
            writer.write(m_signals[i].source.node, columns[i][bucket]);
            ++m_rows;
        }
    }
    return Result();
}

} // namespace Records
