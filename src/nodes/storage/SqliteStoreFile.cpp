#include "nodes/storage/SqliteStoreFile.h"

#include "nodes/storage/SqliteStatement.h"

#include <filesystem>
#include <utility>

namespace Nodes {

SqliteStoreFile::SqliteStoreFile(std::string file, Schema schema)
    : m_file(std::move(file)), m_schema(std::move(schema))
{
}

Result SqliteStoreFile::Open(StoreOpening &opening)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(m_file).parent_path(), ignored);
    Result result = restore(opening);
    if (!result)
        return result;
    result = Result(Result::StorageError, m_file + ": damaged");
    if (!m_isDamaged) {
        result = openOnce();
        if (result)
            m_former.reset();
        if (result || !m_database->IsDamaged())
            return result;
    }
    m_database->Close();
    m_isDamaged = false;
    opening.setAside = SqliteDatabase::SetAside(m_file);
    return opening.setAside.empty() ? result : openOnce();
}

Result SqliteStoreFile::restore(StoreOpening &opening)
{
    if (!m_former)
        return Result();
    const Result result = m_former->PutBack(
        opening.onStep ? opening.onStep : [] {}, opening.isRestored);
    opening.isReplaced = result && !opening.isRestored;
    if (m_schema.former == Former::Helpful)
        return Result();
    if (result)
        m_former.reset();
    return result;
}

void SqliteStoreFile::Close()
{
    m_database->Close();
    m_former.reset();
}

bool SqliteStoreFile::NoticeMove()
{
    if (!m_database->IsMoved())
        return false;
    m_former = std::exchange(m_database, std::make_unique<SqliteDatabase>());
    return true;
}

Result SqliteStoreFile::openOnce()
{
    std::int64_t found = 0;
    Result result = m_database->OpenVersion(m_file, m_schema.version, found);
    if (!result || found == m_schema.version)
        return result;
    result = Transact([&] {
        const Result prepared = m_schema.prepare(*m_database, found);
        const std::string note = "PRAGMA user_version = " + std::to_string(m_schema.version);
        return prepared ? m_database->Execute(note.c_str()) : prepared;
    });
    if (!result)
        m_database->Close();
    return result;
}

Result SqliteStoreFile::Transact(const std::function<Result()> &work)
{
    Result result = m_database->Execute("BEGIN IMMEDIATE");
    const bool hasBegun = bool(result);
    if (result)
        result = work();
    if (result)
        result = m_database->Execute("COMMIT");
    if (result)
        return result;
    m_isDamaged = m_database->IsDamaged();
    // Some failures have rolled back already; a second roll-back then fails, which is no news.
    if (m_isDamaged)
        m_database->Close();
    else if (hasBegun)
        (void)m_database->Execute("ROLLBACK");
    return result;
}

} // namespace Nodes
