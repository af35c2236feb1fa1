#pragma once

#include "apps/records/ProjectFile.h"

#include "nodes/archive/store/ArchiveReader.h"

#include <memory>
#include <string>
#include <vector>

namespace Records {

struct RecordsOptions;

/// What every command begins with: the archive, what it holds, and the project that was named.
class OpenedArchive
{
public:
    /// An archive that is there, and what it holds.
    [[nodiscard]] Nodes::Result open(const RecordsOptions &options);
    /// Likewise, without asking what it holds: it may be damaged.
    [[nodiscard]] Nodes::Result connect(const RecordsOptions &options);
    /// One that may not be there yet: the project is loaded and the location known, so that it can
    /// be made. A file that is there has to be an archive.
    [[nodiscard]] Nodes::Result prepare(const RecordsOptions &options);
    /// Asks what it holds, once it is there.
    [[nodiscard]] Nodes::Result list();

    /// Lets go of it, which a connection else holds open.
    void disconnect() { m_reader.reset(); }

    const std::string &location() const { return m_location; }
    /// After open() and connect().
    Nodes::ArchiveReader &reader() { return *m_reader; }
    /// As of opening.
    const std::vector<Nodes::ArchivedSignal> &signals() const { return m_signals; }
    /// Loaded when the options name a file.
    const ProjectFile &project() const { return m_project; }

private:
    [[nodiscard]] Nodes::Result loadProject(const RecordsOptions &options);

    std::string m_location;
    std::unique_ptr<Nodes::ArchiveReader> m_reader;
    std::vector<Nodes::ArchivedSignal> m_signals;
    ProjectFile m_project;
};

} // namespace Records
