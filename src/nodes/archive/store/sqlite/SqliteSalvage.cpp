#include "nodes/archive/store/sqlite/SqliteSalvage.h"

#include "nodes/archive/store/blocks/BlockRepair.h"
#include "nodes/archive/store/sqlite/SqliteArchiveTables.h"
#include "nodes/storage/DatabaseFiles.h"
#include "nodes/storage/SqliteStatement.h"

#include <array>
#include <filesystem>
#include <fstream>
#include <utility>

namespace Nodes {

namespace fs = std::filesystem;

namespace {

constexpr int mostLost = 100000; // rows in a row that cannot be read: then there are no more

} // namespace

/// Rows are found by their key, so those behind a damaged page are found too.
struct SqliteSalvage::Table
{
    const char *name;
    const char *key;
    std::vector<const char *> columns; // with the key, which comes first; the last one may be data
    bool hasData;
    const char *condition;
};

SqliteSalvage::SqliteSalvage(std::string file, ArchiveFindings &done)
    : m_file(std::move(file)),
      m_done(done),
      m_target(m_file + ".repairing", SqliteArchiveTables::Schema())
{
}

bool SqliteSalvage::IsOurs(const std::string &file)
{
    std::array<unsigned char, 72> head{};
    std::ifstream(file, std::ios::binary)
        .read(reinterpret_cast<char *>(head.data()), std::streamsize(head.size()));
    const auto number = [&head](std::size_t at) {
        return head[at] << 24 | head[at + 1] << 16 | head[at + 2] << 8 | head[at + 3];
    };
    return number(68) == SqliteArchiveTables::Application &&
           number(60) <= SqliteArchiveTables::Version;
}

void SqliteSalvage::report(const std::string &text)
{
    m_done.push_back({{}, 0, 0, m_file, text});
}

Result SqliteSalvage::checkUnused() const
{
    const fs::path path = fs::absolute(m_file);
    for (const DatabaseFiles::File &file : DatabaseFiles(path.parent_path().string()).List()) {
        if (file.path == path.filename().string() && file.isInUse)
            return Result(Result::Refused, m_file + ": its pages are damaged, and it is in use: "
                                                    "stop the station before it is repaired");
    }
    return Result();
}

/// Rows behind `after`, until one cannot be read.
Result SqliteSalvage::copyFrom(const Table &table, std::int64_t &after, bool &isAtEnd)
{
    std::string columns;
    std::string places;
    for (const char *column : table.columns) {
        columns += (columns.empty() ? "" : ", ") + std::string(column);
        places += places.empty() ? "?" : ", ?";
    }
    const std::string from = std::string(" FROM ") + table.name + " WHERE " + table.key +
                             " > ?1 AND " + table.condition + " ORDER BY " + table.key;
    SqliteStatement read(m_source, "SELECT " + columns + from);
    SqliteStatement write(m_target.Database(), std::string("INSERT OR IGNORE INTO ") + table.name +
                                                   " (" + columns + ") VALUES (" + places + ")");
    read.Bind(1, after);
    const int last = int(table.columns.size()) - 1;
    Result written;
    while (written && read.Step()) {
        for (int i = 0; i <= last; ++i) {
            if (table.hasData && i == last)
                write.BindBlob(i + 1, read.Bytes(i));
            else if (read.IsNull(i))
                write.BindNull(i + 1);
            else if (read.IsText(i))
                write.Bind(i + 1, std::string_view(read.Bytes(i)));
            else
                write.Bind(i + 1, read.Integer(i));
        }
        written = write.Run();
        after = read.Integer(0);
    }
    isAtEnd = read.GetResult().IsSuccess();
    return written;
}

Result SqliteSalvage::copy(const Table &table)
{
    std::int64_t after = 0;
    std::int64_t reached = 0;
    int lost = 0;
    bool isAtEnd = false;
    Result result;
    for (int failures = 0; result && !isAtEnd && failures < mostLost; ++failures) {
        result = copyFrom(table, after, isAtEnd);
        if (after > reached) { // there were some behind those lost
            lost += failures;
            failures = 0;
        }
        reached = isAtEnd ? after : ++after;
    }
    if (lost > 0 || !isAtEnd)
        report(std::string("rows of the table ") + table.name +
               " could not be read, others were taken over");
    return result;
}

Result SqliteSalvage::copyAll()
{
    const Table tables[] = {
        {"signals",
         "id",
         {"id", "project", "station", "node", "station_name", "name", "unit", "sealed_to",
          "generated_from", "generated_to"},
         false,
         "1"},
        {"blocks",
         "id",
         {"id", "signal", "height", "first", "last", "samples", "bytes", "bits", "data"},
         true,
         "1"},
        {"log", "id", {"id", "data"}, true, "1"},
        {"odd", "id", {"id", "key", "data"}, true, "1"},
        {"keys", "first", {"first", "last"}, false, "1"}};
    Result result;
    for (const Table &table : tables) {
        if (result)
            result = m_target.Transact([&] { return copy(table); });
    }
    SqliteStatement any(m_target.Database(), "SELECT EXISTS (SELECT 1 FROM blocks) OR "
                                             "EXISTS (SELECT 1 FROM log)");
    if (result && any.Step() && any.Integer(0) == 0)
        return Result(Result::StorageError, m_file + ": no sample can be read of it");
    return result;
}

/// A signal whose row is lost still has its samples: it gets a name by which people find it.
Result SqliteSalvage::completeSignals()
{
    return m_target.Transact([&] {
        return m_target.Database().Execute(R"(
INSERT INTO signals (id, project, station, node, station_name, name, unit, sealed_to,
    generated_from, generated_to)
SELECT DISTINCT signal, 'lost', 0, signal, '', 'Сигнал ' || signal || ', имя утрачено', '', NULL,
    0, 0 FROM blocks WHERE signal NOT IN (SELECT id FROM signals);
UPDATE signals SET sealed_to = max(coalesce(sealed_to, 0), (SELECT max(last) FROM blocks
    WHERE signal = signals.id)) WHERE id IN (SELECT signal FROM blocks))");
    });
}

Result SqliteSalvage::mendSignals()
{
    SqliteArchiveTables tables(m_target.Database());
    std::vector<StoredSignal> found;
    Result result = tables.ReadSignals(0, found);
    for (const StoredSignal &signal : found) {
        if (result)
            result =
                m_target.Transact([&] { return BlockRepair(tables, m_done).MendSignal(signal); });
    }
    return result;
}

Result SqliteSalvage::putInPlace()
{
    m_source.Close();
    m_target.Close();
    const std::string aside = SqliteDatabase::SetAside(m_file);
    std::error_code error;
    if (!aside.empty())
        fs::rename(m_target.GetFile(), m_file, error);
    if (aside.empty() || error)
        return Result(Result::StorageError, m_file + ": cannot be replaced by " +
                                                m_target.GetFile() + " " + error.message());
    report("made anew of what could be read; as it was it is kept as " + aside);
    return Result();
}

Result SqliteSalvage::Run()
{
    Result result = checkUnused();
    if (!result)
        return result;
    std::error_code ignored;
    for (const char *companion : {"", "-wal", "-shm"})
        fs::remove(m_target.GetFile() + companion, ignored);
    result = m_source.Open(m_file, SqliteDatabase::Mode::ReadOnly);
    // Else a file that is shorter than it once was would be refused as a whole.
    if (result)
        result = m_source.Execute("PRAGMA writable_schema = ON");
    StoreOpening opening;
    if (result)
        result = m_target.Open(opening);
    if (result)
        result = copyAll();
    if (result)
        result = completeSignals();
    if (result)
        result = mendSignals();
    return result ? putInPlace() : result;
}

} // namespace Nodes
