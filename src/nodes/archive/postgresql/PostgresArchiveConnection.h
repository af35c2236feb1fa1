#pragma once

#include "nodes/archive/postgresql/PostgresTables.h"
#include "nodes/archive/store/blocks/ArchiveConnection.h"
#include "nodes/storage/postgresql/PostgresConnection.h"

#include <string>

namespace Nodes {

/// Gets a reader at an archive in PostgreSQL. A role that may only SELECT is enough, but for
/// Change.
class PostgresArchiveConnection : public ArchiveConnection
{
public:
    explicit PostgresArchiveConnection(const std::string &location);

    /// Without secrets.
    const std::string &GetLocation() const override;
    [[nodiscard]] Result Begin(bool &isNew) override;
    void End() override;
    void Close() override;
    ArchiveRows &Rows() override { return m_tables; }
    [[nodiscard]] Result Check(ArchiveFindings &findings) override;
    [[nodiscard]] Result Change(const Work &work) override;
    /// Into an archive of any kind, sample by sample: the copy is independent of the server.
    [[nodiscard]] Result Backup(const std::string &to, const std::function<bool()> &step) override;

private:
    PostgresConnection m_connection;
    PostgresTables m_tables;
};

} // namespace Nodes
