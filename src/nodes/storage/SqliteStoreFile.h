#pragma once

#include "nodes/NodesExport.h"
#include "nodes/storage/BasicStore.h"
#include "nodes/storage/SqliteDatabase.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace Nodes {

/// The SQLite file behind a store: what stands once for all of them. One thread at a time.
class NODES_EXPORT SqliteStoreFile
{
public:
    /// Of a file that is no longer there.
    enum class Former {
        Vital,  ///< the store stays closed until what it held is back
        Helpful ///< what can be read of it is taken
    };
    struct Schema
    {
        std::int64_t version = 1; ///< kept as the file's user_version; 0 in a new file
        /// Brings a file of an earlier version up to date, within the transaction that also notes
        /// the version.
        std::function<Result(SqliteDatabase &database, std::int64_t found)> prepare;
        Former former = Former::Vital;
    };

    SqliteStoreFile(std::string file, Schema schema);

    const std::string &GetFile() const { return m_file; }
    [[nodiscard]] Result Open(StoreOpening &opening);
    void Close();
    bool IsOpen() const { return m_database->IsOpen(); }
    bool NoticeMove();
    /// Runs `work` as one transaction: all or nothing. The file is closed after damage, which the
    /// next Open sets aside.
    [[nodiscard]] Result Transact(const std::function<Result()> &work);
    SqliteDatabase &Database() { return *m_database; }

private:
    [[nodiscard]] Result restore(StoreOpening &opening);
    [[nodiscard]] Result openOnce();

    const std::string m_file;
    const Schema m_schema;
    std::unique_ptr<SqliteDatabase> m_database = std::make_unique<SqliteDatabase>();
    std::unique_ptr<SqliteDatabase> m_former; // of a file that is no longer there
    bool m_isDamaged = false;
};

} // namespace Nodes
