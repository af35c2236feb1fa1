#include "nodes/archive/store/ArchiveReader.h"

namespace Nodes {

StoreTable<ArchiveReader> &ArchiveReaders()
{
    static StoreTable<ArchiveReader> readers;
    return readers;
}

} // namespace Nodes
