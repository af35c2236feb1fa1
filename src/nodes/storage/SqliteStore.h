#pragma once

#include "nodes/storage/SqliteStoreFile.h"

#include <string>
#include <utility>

namespace Nodes {

/// What every store in an SQLite file has of BasicStore. `Interface` derives from that.
template <class Interface> class SqliteStore : public Interface
{
public:
    SqliteStore(std::string file, SqliteStoreFile::Schema schema)
        : m_file(std::move(file), std::move(schema))
    {
    }

    const std::string &GetLocation() const override { return m_file.GetFile(); }
    [[nodiscard]] Result Open(StoreOpening &opening) override { return m_file.Open(opening); }
    void Close() override { m_file.Close(); }
    bool IsOpen() const override { return m_file.IsOpen(); }
    bool NoticeMove() override { return m_file.NoticeMove(); }

protected:
    SqliteStoreFile m_file;
};

} // namespace Nodes
