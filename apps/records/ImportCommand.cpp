#include "apps/records/ImportCommand.h"

#include "apps/common/process/StopRequest.h"
#include "apps/records/ArchiveHomes.h"
#include "apps/records/Message.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/values/Uuid.h"

#include <algorithm>

namespace Records {

namespace {

using Nodes::Result;

// Rows are sorted as many at a time: a table in any order then touches each piece of the archive a
// few times only.
constexpr std::size_t batchBytes = 64 << 20;
constexpr std::size_t rowBytes = 40; // about, besides its text
constexpr std::uint64_t toldBadRows = 20;
constexpr std::size_t toldSignals = 20;

} // namespace

ImportCommand::ImportCommand(const RecordsOptions &options)
    : m_options(options), m_table(options.input)
{
}

bool ImportCommand::run()
{
    Result result = m_archive.prepare(m_options);
    // Before the archive is made: a table that is none leaves nothing behind.
    if (result)
        result = m_table.open();
    if (result)
        result = m_writer.open(m_archive.location());
    if (result)
        result = m_archive.list();
    if (result)
        result = chooseHome();
    if (!Message::check(result))
        return false;
    if (!m_writer.setAside().empty())
        Message::tell("the archive was damaged and is now \"" + m_writer.setAside() +
                      "\"; a new one was begun; see \"records archive repair\"");
    result = readTable();
    Message::check(result);
    summarize();
    return result && m_badRows == 0;
}

Result ImportCommand::chooseHome()
{
    const ProjectFile &project = m_archive.project();
    const ArchiveHomes homes(m_archive.signals(), m_options, project);
    if (project.isLoaded()) {
        m_home = project.home();
        return Result();
    }
    const Result isClear = homes.requireOne();
    if (!isClear)
        return isClear;
    if (!homes.homes().empty()) {
        m_home = homes.homes().front();
        return Result();
    }
    if (!m_options.station.empty() &&
        m_options.station.find_first_not_of("0123456789") != std::string::npos)
        return Result(Result::NotFound, "the archive knows no station \"" + m_options.station +
                                            "\"; give its id, or name the project by its file");
    m_home.project = m_options.project;
    m_home.station = m_options.station.empty() ? 0 : std::stoul(m_options.station);
    if (m_home.project.empty() && !m_archive.signals().empty())
        return Result(Result::NotFound, "the archive has nothing of that station; name the "
                                        "project with --project");
    if (m_home.project.empty())
        Message::tell("the archive is empty and no --project is named: the samples get none, and "
                      "no station will show them");
    return Result();
}

ImportCommand::Series *ImportCommand::seriesOf(unsigned long signal)
{
    const auto held = m_series.find(signal);
    if (held != m_series.end())
        return &held->second;
    const ProjectFile &project = m_archive.project();
    const Nodes::BasicSignal *node = project.isLoaded() ? project.find(signal) : nullptr;
    const Nodes::ArchiveSignalKey wanted{{m_home, signal, {}}, {}};
    const auto known =
        std::find_if(m_archive.signals().begin(), m_archive.signals().end(),
                     [&](const auto &archived) { return archived.key.IsSame(wanted); });
    const bool isKnown = known != m_archive.signals().end();
    if (!node && !isKnown && project.isLoaded())
        return nullptr;
    if (!isKnown)
        m_newSignals.insert(signal);
    Series &series = m_series[signal];
    series.key = node ? project.keyOf(*node) : isKnown ? known->key : wanted;
    return &series;
}

bool ImportCommand::take(const SampleRow &row)
{
    Series *series = seriesOf(row.signal);
    if (!series)
        return takeBad(m_table.place() + ": neither the project nor the archive has a signal " +
                       std::to_string(row.signal));
    row.addTo(series->run);
    m_batchBytes += rowBytes + row.text.size();
    ++m_rows;
    if (m_firstLine == 0)
        m_firstLine = m_table.line();
    m_lastLine = m_table.line();
    return true;
}

bool ImportCommand::takeBad(const std::string &trouble)
{
    ++m_badRows;
    if (!m_options.skipsBad || m_badRows <= toldBadRows)
        Message::tell(trouble);
    if (m_options.skipsBad && m_badRows == toldBadRows)
        Message::tell("further lines that are no good are only counted");
    return m_options.skipsBad;
}

Result ImportCommand::readTable()
{
    Result result = readRows();
    // What came before what stopped it is kept.
    const Result written = writeBatch();
    const Result finished = m_writer.finish();
    if (result)
        result = written;
    return result ? finished : result;
}

Result ImportCommand::readRows()
{
    SampleRow row;
    while (!Host::StopRequest::isMade()) {
        row.text.clear();
        const SampleTableReader::Step step = m_table.next(row);
        if (step == SampleTableReader::Step::End)
            return Result();
        if (step == SampleTableReader::Step::Failed)
            break;
        if (step == SampleTableReader::Step::Row ? !take(row) : !takeBad(m_table.trouble()))
            return Result();
        if (m_batchBytes < batchBytes)
            continue;
        const Result written = writeBatch();
        if (!written)
            return written;
        showProgress();
    }
    return Host::StopRequest::isMade() ? Result(Result::Cancelled, "stopped")
                                       : Result(Result::StorageError, m_table.trouble());
}

Result ImportCommand::writeBatch()
{
    for (auto &[signal, series] : m_series) {
        series.run.Sort();
        const Result result = m_writer.write(series.key, series.run, m_options.isGenerated);
        if (!result)
            return result;
        series.run = {}; // with its memory: there may be many signals
    }
    m_batchBytes = 0;
    const Result result = m_writer.commit();
    if (result)
        m_committedLine = m_lastLine;
    return result;
}

void ImportCommand::showProgress() const
{
    std::string text = std::to_string(m_rows) + " rows";
    if (m_table.size() > 0)
        text += ", " + std::to_string(m_table.bytesRead() * 100 / m_table.size()) + " %";
    Message::progress(text);
}

void ImportCommand::summarize() const
{
    std::string text = m_writer.written() > 0
                           ? std::to_string(m_writer.written()) + " samples are in the archive"
                           : std::string("no samples were imported");
    if (m_committedLine > 0)
        text +=
            ", of lines " + std::to_string(m_firstLine) + " to " + std::to_string(m_committedLine);
    if (m_badRows > 0 && m_options.skipsBad)
        text += "; " + std::to_string(m_badRows) + " lines were passed over";
    if (m_committedLine < m_lastLine || (m_badRows > 0 && !m_options.skipsBad))
        text += "; import the rest, or all of it again: what is there stays as it is";
    Message::tell(text);
    if (m_newSignals.empty() || m_archive.project().isLoaded() || m_archive.signals().empty())
        return;
    text = "signals that the archive did not know: " + std::to_string(m_newSignals.size()) + ":";
    auto signal = m_newSignals.begin();
    for (std::size_t i = 0; i < toldSignals && signal != m_newSignals.end(); ++i)
        text += " " + std::to_string(*signal++);
    Message::tell(text + (signal == m_newSignals.end() ? "" : " ..."));
}

} // namespace Records
