#pragma once

#include "nodes/archive/store/blocks/ArchiveConnection.h"
#include "nodes/archive/store/sqlite/SqliteArchiveTables.h"
#include "nodes/storage/SqliteDatabase.h"

namespace Nodes {

/// Reads an archive in an SQLite file, beside the one who writes it.
class SqliteArchiveConnection : public ArchiveConnection
{
public:
    explicit SqliteArchiveConnection(std::string file) : m_file(std::move(file)), m_rows(m_database)
    {
    }

    const std::string &GetLocation() const override { return m_file; }
    [[nodiscard]] Result Begin(bool &isNew) override;
    void End() override;
    void Close() override;
    ArchiveRows &Rows() override { return m_rows; }
    [[nodiscard]] Result Check(ArchiveFindings &findings) override;
    [[nodiscard]] Result Salvage(ArchiveFindings &done) override;
    [[nodiscard]] Result Change(const Work &work) override;
    [[nodiscard]] Result Backup(const std::string &to, const std::function<bool()> &step) override;

private:
    [[nodiscard]] Result connect();

    const std::string m_file;
    SqliteDatabase m_database;
    SqliteArchiveTables m_rows;
};

} // namespace Nodes
