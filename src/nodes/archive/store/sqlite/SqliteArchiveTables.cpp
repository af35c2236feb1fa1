#include "nodes/archive/store/sqlite/SqliteArchiveTables.h"

#include "nodes/storage/SqliteStatement.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr const char *newTables = R"(
PRAGMA application_id = 0x4F534152;
CREATE TABLE signals (
    id INTEGER PRIMARY KEY, project TEXT NOT NULL, station INTEGER NOT NULL, node INTEGER NOT NULL,
    station_name TEXT NOT NULL, name TEXT NOT NULL, unit TEXT NOT NULL, sealed_to INTEGER,
    generated_from INTEGER NOT NULL, generated_to INTEGER NOT NULL,
    UNIQUE (project, station, node));
CREATE TABLE blocks (
    id INTEGER PRIMARY KEY, signal INTEGER NOT NULL, height INTEGER NOT NULL,
    first INTEGER NOT NULL, last INTEGER NOT NULL, samples INTEGER NOT NULL,
    bytes INTEGER NOT NULL, bits INTEGER NOT NULL, data BLOB NOT NULL);
CREATE INDEX blocks_place ON blocks (signal, height, first, last, samples, bytes, bits);
CREATE TABLE aggregates (
    id INTEGER PRIMARY KEY, signal INTEGER NOT NULL, height INTEGER NOT NULL,
    first INTEGER NOT NULL, last INTEGER NOT NULL, samples INTEGER NOT NULL,
    bytes INTEGER NOT NULL, bits INTEGER NOT NULL, data BLOB NOT NULL);
CREATE INDEX aggregates_place ON aggregates (signal, height, first, last, samples, bytes, bits);
CREATE TABLE log (id INTEGER PRIMARY KEY, data BLOB NOT NULL);
CREATE TABLE keys (first INTEGER PRIMARY KEY, last INTEGER NOT NULL);
CREATE TABLE odd (id INTEGER PRIMARY KEY, key INTEGER NOT NULL, data BLOB NOT NULL))";

constexpr const char *allSignals =
    "SELECT id, project, station, node, station_name, name, unit, sealed_to, generated_from, "
    "generated_to FROM signals WHERE id > ?1 ORDER BY id";
constexpr const char *oneSignal =
    "SELECT id, project, station, node, station_name, name, unit, sealed_to, generated_from, "
    "generated_to FROM signals WHERE project = ?1 AND station = ?2 AND node = ?3";
constexpr const char *newSignal =
    "INSERT INTO signals (project, station, node, station_name, name, unit, sealed_to, "
    "generated_from, generated_to) VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9) RETURNING id";
constexpr const char *changedSignal =
    "UPDATE signals SET project = ?1, station = ?2, node = ?3, station_name = ?4, name = ?5, "
    "unit = ?6, sealed_to = ?7, generated_from = ?8, generated_to = ?9 WHERE id = ?10";
/// A statement for blocks of samples, and the same for those of aggregates. They are in tables of
/// their own: between them small rows would leave most of each page of large ones unused.
struct BlockSql
{
    const char *samples;
    const char *aggregates;

    const char *For(int height) const { return height == 0 ? samples : aggregates; }
};

#define BLOCK_LIST(table)                                                                          \
    "SELECT id, first, last, samples, bytes, bits FROM " table                                     \
    " WHERE signal = ?1 AND height = ?2 AND first <= ?4 AND first >= coalesce((SELECT max(first) " \
    "FROM " table " WHERE signal = ?1 AND height = ?2 AND first <= ?3), ?3) ORDER BY first "       \
    "LIMIT ?5"
#define BLOCK_INSERTION(table)                                                                     \
    "INSERT INTO " table " (signal, height, first, last, samples, bytes, bits, data) "             \
    "VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)"
constexpr BlockSql someBlocks{BLOCK_LIST("blocks"), BLOCK_LIST("aggregates")};
constexpr BlockSql newBlock{BLOCK_INSERTION("blocks"), BLOCK_INSERTION("aggregates")};
constexpr BlockSql blockData{"SELECT data FROM blocks WHERE id = ?1",
                             "SELECT data FROM aggregates WHERE id = ?1"};
constexpr BlockSql goneBlock{"DELETE FROM blocks WHERE id = ?1",
                             "DELETE FROM aggregates WHERE id = ?1"};
#undef BLOCK_LIST
#undef BLOCK_INSERTION

std::int64_t asInteger(std::uint64_t number)
{
    return static_cast<std::int64_t>(number);
}

std::uint64_t asCount(std::int64_t number)
{
    return static_cast<std::uint64_t>(number);
}

StoredSignal readSignal(const SqliteStatement &s)
{
    StoredSignal signal;
    RecordSource &source = signal.key.source;
    signal.number = s.Integer(0);
    source.home = {s.Bytes(1), asCount(s.Integer(2)), s.Bytes(4)};
    source.node = asCount(s.Integer(3));
    source.name = s.Bytes(5);
    signal.key.unit = s.Bytes(6);
    if (!s.IsNull(7))
        signal.sealedTo = s.Integer(7);
    signal.generatedFrom = s.Integer(8);
    signal.generatedTo = s.Integer(9);
    return signal;
}

void bindSignal(SqliteStatement &s, const StoredSignal &signal)
{
    const RecordSource &source = signal.key.source;
    s.Bind(1, source.home.project);
    s.Bind(2, asInteger(source.home.station));
    s.Bind(3, asInteger(source.node));
    s.Bind(4, source.home.stationName);
    s.Bind(5, source.name);
    s.Bind(6, signal.key.unit);
    if (signal.sealedTo == StoredSignal::Never)
        s.BindNull(7);
    else
        s.Bind(7, signal.sealedTo);
    s.Bind(8, signal.generatedFrom);
    s.Bind(9, signal.generatedTo);
}

} // namespace

SqliteStoreFile::Schema SqliteArchiveTables::Schema()
{
    return {
        Version,
        [](SqliteDatabase &database, std::int64_t found) { return database.Execute(newTables); },
        SqliteStoreFile::Former::Vital};
}

Result SqliteArchiveTables::ReadSignals(std::int64_t after, std::vector<StoredSignal> &signals)
{
    auto s = m_statement(allSignals);
    s->Bind(1, after);
    while (s->Step())
        signals.push_back(readSignal(*s));
    return s->GetResult();
}

Result SqliteArchiveTables::FindSignal(const ArchiveSignalKey &key,
                                       std::optional<StoredSignal> &signal)
{
    auto s = m_statement(oneSignal);
    s->Bind(1, key.source.home.project);
    s->Bind(2, asInteger(key.source.home.station));
    s->Bind(3, asInteger(key.source.node));
    signal.reset();
    if (s->Step())
        signal = readSignal(*s);
    return s->GetResult();
}

Result SqliteArchiveTables::ListBlocks(std::int64_t signal, int height, Timestamp from,
                                       Timestamp to, std::size_t limit, StoredBlocks &blocks)
{
    constexpr std::size_t most = 1u << 30;
    auto s = m_statement(someBlocks.For(height));
    s->Bind(1, signal);
    s->Bind(2, std::int64_t(height));
    s->Bind(3, from);
    s->Bind(4, to);
    s->Bind(5, asInteger(std::min(limit, most)));
    blocks.clear();
    while (s->Step()) {
        StoredBlock &block = blocks.emplace_back();
        block.id = s->Integer(0);
        block.signal = signal;
        block.height = height;
        block.first = s->Integer(1);
        block.last = s->Integer(2);
        block.samples = asCount(s->Integer(3));
        block.bytes = asCount(s->Integer(4));
        block.bits = static_cast<int>(s->Integer(5));
    }
    return s->GetResult();
}

Result SqliteArchiveTables::ReadBlock(const StoredBlock &block, std::string &bytes)
{
    auto s = m_statement(blockData.For(block.height));
    s->Bind(1, block.id);
    if (s->Step()) {
        bytes = s->Bytes(0);
        return Result();
    }
    const Result result = s->GetResult();
    return result ? Result(Result::NotFound, "block " + std::to_string(block.id)) : result;
}

Result SqliteArchiveTables::SumChunks(std::int64_t signal, StoredBlock &sum)
{
    auto s = m_statement("SELECT coalesce(sum(samples), 0), coalesce(sum(bytes), 0), min(first), "
                         "max(last) FROM blocks WHERE signal = ?1 AND height = 0");
    s->Bind(1, signal);
    sum = StoredBlock();
    sum.signal = signal;
    if (s->Step()) {
        sum.samples = asCount(s->Integer(0));
        sum.bytes = asCount(s->Integer(1));
        sum.first = s->Integer(2);
        sum.last = s->Integer(3);
    }
    return s->GetResult();
}

Result SqliteArchiveTables::FirstLogRow(std::int64_t &number)
{
    auto s = m_statement("SELECT min(id) FROM log");
    number = s->Step() ? s->Integer(0) : 0;
    return s->GetResult();
}

Result SqliteArchiveTables::ReadLog(std::int64_t after, const LogVisitor &visitor)
{
    auto s = m_statement("SELECT id, data FROM log WHERE id > ?1 ORDER BY id");
    s->Bind(1, after);
    while (s->Step())
        visitor(s->Integer(0), s->Bytes(1));
    return s->GetResult();
}

Result SqliteArchiveTables::ReadOddRecords(const OddVisitor &visitor)
{
    auto s = m_statement("SELECT key, data FROM odd WHERE key <> 0 ORDER BY id");
    while (s->Step())
        visitor(asCount(s->Integer(0)), s->Bytes(1));
    return s->GetResult();
}

Result SqliteArchiveTables::AddSignal(StoredSignal &signal)
{
    auto s = m_statement(newSignal);
    bindSignal(*s, signal);
    if (s->Step())
        signal.number = s->Integer(0);
    while (s->Step()) {
    }
    return s->GetResult();
}

Result SqliteArchiveTables::UpdateSignal(const StoredSignal &signal)
{
    auto s = m_statement(changedSignal);
    bindSignal(*s, signal);
    s->Bind(10, signal.number);
    return s->Run();
}

Result SqliteArchiveTables::PutBlock(const StoredBlock &block, const std::string &bytes)
{
    auto s = m_statement(newBlock.For(block.height));
    s->Bind(1, block.signal);
    s->Bind(2, std::int64_t(block.height));
    s->Bind(3, block.first);
    s->Bind(4, block.last);
    s->Bind(5, asInteger(block.samples));
    s->Bind(6, asInteger(block.bytes));
    s->Bind(7, std::int64_t(block.bits));
    s->BindBlob(8, bytes);
    return s->Run();
}

Result SqliteArchiveTables::EraseBlock(const StoredBlock &block)
{
    auto s = m_statement(goneBlock.For(block.height));
    s->Bind(1, block.id);
    return s->Run();
}

Result SqliteArchiveTables::AppendLog(const std::string &bytes, std::int64_t &number)
{
    auto s = m_statement("INSERT INTO log (data) VALUES (?1) RETURNING id");
    s->BindBlob(1, bytes);
    if (s->Step())
        number = s->Integer(0);
    while (s->Step()) {
    }
    return s->GetResult();
}

Result SqliteArchiveTables::EraseLog(std::int64_t upTo)
{
    auto s = m_statement("DELETE FROM log WHERE id <= ?1");
    s->Bind(1, upTo);
    return s->Run();
}

Result SqliteArchiveTables::ReadKeys(std::vector<Keys> &keys)
{
    auto s = m_statement("SELECT first, last FROM keys ORDER BY first");
    while (s->Step())
        keys.push_back({asCount(s->Integer(0)), asCount(s->Integer(1))});
    return s->GetResult();
}

Result SqliteArchiveTables::PutKeys(const Keys &keys)
{
    auto s = m_statement("REPLACE INTO keys (first, last) VALUES (?1, ?2)");
    s->Bind(1, asInteger(keys.first));
    s->Bind(2, asInteger(keys.last));
    return s->Run();
}

Result SqliteArchiveTables::EraseKeys(std::uint64_t first)
{
    auto s = m_statement("DELETE FROM keys WHERE first = ?1");
    s->Bind(1, asInteger(first));
    return s->Run();
}

Result SqliteArchiveTables::PutOddRecord(std::uint64_t key, const std::string &bytes)
{
    auto s = m_statement("INSERT INTO odd (key, data) VALUES (?1, ?2)");
    s->Bind(1, asInteger(key));
    s->BindBlob(2, bytes);
    return s->Run();
}

Result SqliteArchiveTables::SettleOddRecords()
{
    auto s = m_statement("UPDATE odd SET key = 0 WHERE key <> 0");
    return s->Run();
}

} // namespace Nodes
