#include "apps/records/OpenedArchive.h"

#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"

#include "nodes/values/Uuid.h"

namespace Records {

using Nodes::Result;

Result OpenedArchive::loadProject(const RecordsOptions &options)
{
    if (options.project.empty() || Nodes::IsUuid(options.project))
        return Result();
    return m_project.load(options.project, options.station);
}

Result OpenedArchive::connect(const RecordsOptions &options)
{
    const Result found = StoreLocation::find(options.store, m_location);
    return found ? Nodes::ArchiveReaders().Make(m_location, m_reader) : found;
}

Result OpenedArchive::open(const RecordsOptions &options)
{
    Result result = loadProject(options);
    if (result)
        result = connect(options);
    if (result)
        result = m_reader->ListSignals(m_signals);
    return result;
}

Result OpenedArchive::prepare(const RecordsOptions &options)
{
    m_location = StoreLocation::make(options.store);
    return loadProject(options);
}

Result OpenedArchive::list()
{
    std::unique_ptr<Nodes::ArchiveReader> reader; // for this only: it would hold up the writer
    const Result made = Nodes::ArchiveReaders().Make(m_location, reader);
    return made ? reader->ListSignals(m_signals) : made;
}

} // namespace Records
