#include "nodes/storage/DatabaseDigest.h"

#include "nodes/storage/Digest.h"
#include "nodes/storage/SqliteDatabase.h"
#include "nodes/storage/SqliteStatement.h"

#include <sqlite3.h>

#include <fstream>
#include <vector>

namespace Nodes {

namespace {

constexpr std::size_t digestBytes = 32;
constexpr int rowsBetweenSteps = 5000;
constexpr std::size_t fileChunk = 1 << 20;

std::string hexadecimal(const std::string &bytes)
{
    constexpr const char *digits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[static_cast<unsigned char>(byte) & 0xF];
    }
    return text;
}

void addValue(Digest &digest, sqlite3_stmt *row, int column)
{
    const int type = sqlite3_column_type(row, column);
    digest.Add(std::uint64_t(type));
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(row, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(row, column));
    digest.Add(std::uint64_t(size)).Add(std::string_view(bytes ? bytes : "", size));
}

Result addRows(SqliteDatabase &database, const std::string &sql, const DatabaseDigest::Step &step,
               Digest &digest)
{
    sqlite3_stmt *row = nullptr;
    int code = sqlite3_prepare_v2(database.Handle(), sql.c_str(), -1, &row, nullptr);
    bool isWanted = true;
    int count = 0;
    while (code == SQLITE_OK && isWanted && (code = sqlite3_step(row)) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(row); ++column)
            addValue(digest, row, column);
        isWanted = ++count % rowsBetweenSteps != 0 || step();
        code = SQLITE_OK;
    }
    sqlite3_finalize(row);
    if (!isWanted)
        return Result(Result::Cancelled);
    return code == SQLITE_DONE ? Result() : database.Error("read back");
}

std::string quoted(const std::string &name)
{
    std::string text = "\"";
    for (const char letter : name)
        text += letter == '"' ? std::string("\"\"") : std::string(1, letter);
    return text + "\"";
}

} // namespace

Result DatabaseDigest::OfContent(SqliteDatabase &database, const Step &step, std::string &digest)
{
    const std::string schema = "SELECT name, sql FROM sqlite_master ORDER BY name";
    Digest hash(digestBytes);
    Result result = addRows(database, schema, step, hash);
    std::vector<std::string> tables;
    SqliteStatement names(database, "SELECT name FROM sqlite_master WHERE type = 'table' AND name "
                                    "NOT LIKE 'sqlite_stat%' ORDER BY name");
    while (names.Step())
        tables.push_back(names.Bytes(0));
    if (result)
        result = names.GetResult();
    for (const std::string &table : tables) {
        if (result)
            result = addRows(database, "SELECT * FROM " + quoted(table), step, hash);
    }
    digest = hexadecimal(hash.Finish());
    return result;
}

Result DatabaseDigest::OfFile(const std::string &file, const Step &step, std::string &digest)
{
    std::ifstream stream(file, std::ios::binary);
    std::vector<char> chunk(fileChunk);
    Digest hash(digestBytes);
    while (stream) {
        stream.read(chunk.data(), std::streamsize(chunk.size()));
        hash.Add(std::string_view(chunk.data(), static_cast<std::size_t>(stream.gcount())));
        if (!step())
            return Result(Result::Cancelled, file);
    }
    digest = hexadecimal(hash.Finish());
    return stream.eof() ? Result() : Result(Result::StorageError, file + ": cannot be read");
}

} // namespace Nodes
