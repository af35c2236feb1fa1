#include "apps/records/OpenedArchive.h"

#include "apps/records/RecordsOptions.h"
#include "apps/records/StoreLocation.h"

#include "nodes/values/Uuid.h"

#include <filesystem>

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

Result OpenedArchive::openOrMake(const RecordsOptions &options)
{
    m_location = StoreLocation::make(options.store);
    const std::string file = StoreLocation::fileOf(m_location);
    std::error_code ignored;
    if (file.empty() || std::filesystem::exists(file, ignored))
        return open(options);
    return loadProject(options);
}

} // namespace Records
