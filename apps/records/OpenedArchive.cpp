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
    const Result found =
        StoreLocation::find(options.store, StoreLocation::Kind::Archive, m_location);
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
    const Result loaded = loadProject(options);
    const std::string file = StoreLocation::fileOf(m_location);
    std::error_code error;
    if (!loaded || file.empty() || std::filesystem::file_size(file, error) == 0 || error)
        return loaded;
    // A writer would set aside what is no archive, and begin one in its place.
    const Result listed = list();
    return listed ? listed
                  : Result(listed.GetType(), listed.GetDetail() +
                                                 "; nothing was changed: is it an archive? Then "
                                                 "see \"records archive repair\"");
}

Result OpenedArchive::list()
{
    std::unique_ptr<Nodes::ArchiveReader> reader; // for this only: it would hold up the writer
    const Result made = Nodes::ArchiveReaders().Make(m_location, reader);
    return made ? reader->ListSignals(m_signals) : made;
}

} // namespace Records
