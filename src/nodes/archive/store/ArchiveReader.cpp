#include "nodes/archive/store/ArchiveReader.h"

#include "nodes/archive/postgresql/PostgresArchiveConnection.h"
#include "nodes/archive/store/blocks/BlockArchiveReader.h"
#include "nodes/archive/store/sqlite/SqliteArchiveConnection.h"
#include "nodes/storage/postgresql/PostgresLocation.h"

namespace Nodes {

StoreTable<ArchiveReader> &ArchiveReaders()
{
    static StoreTable<ArchiveReader> readers = [] {
        StoreTable<ArchiveReader> builtIn;
        builtIn.Add("", [](const std::string &file) {
            return std::make_unique<BlockArchiveReader>(
                std::make_unique<SqliteArchiveConnection>(file));
        });
        for (const char *scheme : PostgresLocation::Schemes)
            builtIn.Add(scheme, [](const std::string &location) {
                return std::make_unique<BlockArchiveReader>(
                    std::make_unique<PostgresArchiveConnection>(location));
            });
        return builtIn;
    }();
    return readers;
}

} // namespace Nodes
