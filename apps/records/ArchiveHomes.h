#pragma once

#include "nodes/archive/store/ArchiveReader.h"
#include "nodes/storage/RecordSource.h"
#include "nodes/values/Result.h"

#include <string>
#include <vector>

namespace Records {

class ProjectFile;
struct RecordsOptions;

/// Whose signals are meant: ids mean something within one project and station only.
class ArchiveHomes
{
public:
    /// Of an archive's signals those that the options let in. `project`, when it is loaded, is the
    /// one that they name by a file.
    ArchiveHomes(const std::vector<Nodes::ArchivedSignal> &signals, const RecordsOptions &options,
                 const ProjectFile &project);

    const std::vector<Nodes::ArchivedSignal> &signals() const { return m_signals; }
    const std::vector<Nodes::RecordHome> &homes() const { return m_homes; }
    /// Success when ids are clear: there is one home at most. Else the homes are told.
    [[nodiscard]] Nodes::Result requireOne() const;

    /// "project c282... station 2 "Станция оператора"".
    static std::string describe(const Nodes::RecordHome &home);

private:
    std::vector<Nodes::ArchivedSignal> m_signals;
    std::vector<Nodes::RecordHome> m_homes;
};

} // namespace Records
