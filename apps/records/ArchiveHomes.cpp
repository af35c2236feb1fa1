#include "apps/records/ArchiveHomes.h"

#include "apps/records/ProjectFile.h"
#include "apps/records/RecordsOptions.h"

#include <algorithm>

namespace Records {

namespace {

using Nodes::RecordHome;

bool isSame(const RecordHome &left, const RecordHome &right)
{
    return left.project == right.project && left.station == right.station;
}

bool isMeant(const RecordHome &home, const RecordsOptions &options, const ProjectFile &project)
{
    const std::string uuid = project.isLoaded() ? project.home().project : options.project;
    if (!options.project.empty() && home.project != uuid)
        return false;
    return options.station.empty() || home.stationName == options.station ||
           std::to_string(home.station) == options.station;
}

} // namespace

ArchiveHomes::ArchiveHomes(const std::vector<Nodes::ArchivedSignal> &signals,
                           const RecordsOptions &options, const ProjectFile &project)
{
    for (const Nodes::ArchivedSignal &signal : signals) {
        const RecordHome &home = signal.key.source.home;
        if (!isMeant(home, options, project))
            continue;
        m_signals.push_back(signal);
        const bool isKnown = std::any_of(m_homes.begin(), m_homes.end(),
                                         [&](const RecordHome &o) { return isSame(home, o); });
        if (!isKnown)
            m_homes.push_back(home);
    }
}

std::string ArchiveHomes::describe(const RecordHome &home)
{
    const std::string project =
        home.project.empty() ? std::string("no project") : "project " + home.project;
    if (home.station == 0)
        return project + ", no station";
    return project + ", station " + std::to_string(home.station) + " \"" + home.stationName + "\"";
}

Nodes::Result ArchiveHomes::requireOne() const
{
    if (m_homes.size() <= 1)
        return Nodes::Result();
    std::string text = "the archive has signals of several; say with --project and --station which "
                       "are meant:";
    for (const RecordHome &home : m_homes)
        text += "\n  " + describe(home);
    return Nodes::Result(Nodes::Result::InvalidArgument, text);
}

} // namespace Records
