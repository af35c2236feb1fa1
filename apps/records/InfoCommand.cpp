#include "apps/records/InfoCommand.h"

#include "apps/records/ArchiveHomes.h"
#include "apps/records/Message.h"
#include "apps/records/OutputFile.h"
#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"
#include "apps/records/TimeText.h"

#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"
#include "nodes/values/JsonText.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <filesystem>

namespace Records {

namespace {

using Nodes::ArchivedSignal;

/// Characters of a UTF-8 text.
std::size_t lengthOf(const std::string &text)
{
    return std::size_t(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xc0) != 0x80; }));
}

/// Rows of cells with their columns below each other; `numbers` of them, from the left, are set
/// right.
std::string aligned(const std::vector<std::vector<std::string>> &rows,
                    const std::vector<bool> &isNumber)
{
    std::vector<std::size_t> widths(isNumber.size());
    for (const auto &row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], lengthOf(row[i]));
    }
    std::string text;
    for (const auto &row : rows) {
        std::string line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::string blanks(widths[i] - lengthOf(row[i]) + 2, ' ');
            line += isNumber[i] ? blanks.substr(2) + row[i] + "  " : row[i] + blanks;
        }
        line.erase(line.find_last_not_of(' ') + 1);
        text += line + '\n';
    }
    return text;
}

/// Whole seconds are enough for people.
std::string shortTime(Nodes::Timestamp time)
{
    constexpr std::size_t seconds = 19;
    return time == 0 ? std::string("-") : TimeText::format(time).substr(0, seconds) + "Z";
}

std::string perSample(std::uint64_t bytes, std::uint64_t samples)
{
    return samples == 0 ? std::string("-") : Nodes::FormatFixed(double(bytes) / double(samples), 2);
}

std::string jsonTime(Nodes::Timestamp time)
{
    return time == 0 ? std::string("null") : Nodes::JsonText(TimeText::format(time));
}

} // namespace

bool InfoCommand::run()
{
    if (!Message::check(m_archive.open(m_options)))
        return false;
    m_signals = ArchiveHomes(m_archive.signals(), m_options, m_archive.project()).signals();
    for (const ArchivedSignal &signal : m_signals) {
        m_samples += signal.samples;
        m_bytes += signal.bytes;
    }
    OutputFile output("");
    if (!Message::check(output.open()))
        return false;
    output.write(m_options.isJson ? asJson() : asTable());
    return Message::check(output.finish());
}

/// Of a project that was named, and of its station.
bool InfoCommand::isDeleted(const ArchivedSignal &signal) const
{
    const ProjectFile &project = m_archive.project();
    return project.isLoaded() && !project.has(signal.key.source.node);
}

std::uint64_t InfoCommand::fileBytes() const
{
    const std::string file = StoreLocation::fileOf(m_archive.location());
    std::uint64_t bytes = 0;
    for (const char *companion : {"", "-wal"}) {
        std::error_code error;
        const auto size = std::filesystem::file_size(file + companion, error);
        bytes += error ? 0 : size;
    }
    return file.empty() ? 0 : bytes;
}

std::int64_t InfoCommand::formatVersion() const
{
    const std::string file = StoreLocation::fileOf(m_archive.location());
    Nodes::SqliteDatabase database;
    if (file.empty() || !database.Open(file, Nodes::SqliteDatabase::Mode::ReadOnly))
        return 0;
    Nodes::SqliteStatement version(database, "PRAGMA user_version");
    return version.Step() ? version.Integer(0) : 0;
}

std::string InfoCommand::remarkOn(const ArchivedSignal &signal) const
{
    std::string remark;
    if (isDeleted(signal))
        remark = "not in the project";
    if (signal.IsGenerated())
        remark += (remark.empty() ? "" : ", ") + std::string("generated ") +
                  shortTime(signal.generatedFrom) + " to " + shortTime(signal.generatedTo);
    return remark;
}

std::string InfoCommand::asTable() const
{
    std::string text = "archive  " + StoreLocation::shown(m_archive.location()) + "\n";
    if (const std::int64_t version = formatVersion())
        text += "format   " + std::to_string(version) + "\n";
    const ArchiveHomes homes(m_signals, m_options, m_archive.project());
    for (const Nodes::RecordHome &home : homes.homes()) {
        std::vector<std::vector<std::string>> rows{
            {"id", "name", "unit", "first", "last", "samples", "bytes", "B/sample", ""}};
        for (const ArchivedSignal &signal : m_signals) {
            const Nodes::RecordSource &source = signal.key.source;
            if (source.home.project != home.project || source.home.station != home.station)
                continue;
            rows.push_back({std::to_string(source.node), source.name, signal.key.unit,
                            shortTime(signal.first), shortTime(signal.last),
                            std::to_string(signal.samples), std::to_string(signal.bytes),
                            perSample(signal.bytes, signal.samples), remarkOn(signal)});
        }
        text += "\n" + ArchiveHomes::describe(home) + "\n" +
                aligned(rows, {true, false, false, false, false, true, true, true, false});
    }
    text += "\n" + std::to_string(m_signals.size()) + " signals, " + std::to_string(m_samples) +
            " samples, " + std::to_string(m_bytes) + " bytes packed, " +
            perSample(m_bytes, m_samples) + " a sample";
    if (const std::uint64_t bytes = fileBytes())
        text += "; file " + std::to_string(bytes) + " bytes, " + perSample(bytes, m_samples) +
                " a sample";
    return text + "\n";
}

std::string InfoCommand::jsonOf(const ArchivedSignal &signal) const
{
    const Nodes::RecordSource &source = signal.key.source;
    std::string text =
        "{\"project\": " + Nodes::JsonText(source.home.project) +
        ", \"station\": " + std::to_string(source.home.station) +
        ", \"stationName\": " + Nodes::JsonText(source.home.stationName) +
        ", \"id\": " + std::to_string(source.node) + ", \"name\": " + Nodes::JsonText(source.name) +
        ", \"unit\": " + Nodes::JsonText(signal.key.unit) +
        ", \"first\": " + jsonTime(signal.first) + ", \"last\": " + jsonTime(signal.last) +
        ", \"samples\": " + std::to_string(signal.samples) +
        ", \"bytes\": " + std::to_string(signal.bytes) +
        ", \"generatedFrom\": " + jsonTime(signal.generatedFrom) +
        ", \"generatedTo\": " + jsonTime(signal.generatedTo);
    if (m_archive.project().isLoaded())
        text += std::string(", \"isDeleted\": ") + (isDeleted(signal) ? "true" : "false");
    return text + "}";
}

std::string InfoCommand::asJson() const
{
    std::string text =
        "{\n  \"archive\": " + Nodes::JsonText(StoreLocation::shown(m_archive.location())) +
        ",\n  \"signals\": [";
    for (const ArchivedSignal &signal : m_signals)
        text += (&signal == &m_signals.front() ? "\n    " : ",\n    ") + jsonOf(signal);
    return text + "\n  ],\n  \"samples\": " + std::to_string(m_samples) +
           ",\n  \"bytes\": " + std::to_string(m_bytes) +
           ",\n  \"format\": " + std::to_string(formatVersion()) +
           ",\n  \"fileBytes\": " + std::to_string(fileBytes()) + "\n}\n";
}

} // namespace Records
