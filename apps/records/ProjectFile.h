#pragma once

#include "nodes/archive/store/ArchiveSignalKey.h"
#include "nodes/values/Result.h"

#include <memory>
#include <string>

namespace Nodes {
class BasicSignal;
class systemCore;
} // namespace Nodes

namespace Records {

/// A project that the command line names, loaded to look into it: nothing of it runs. One a
/// process.
class ProjectFile
{
public:
    ProjectFile();
    ~ProjectFile();

    /// `station`: name or id, "" for the first. What is wrong with the project is told on stderr
    /// when it hinders.
    [[nodiscard]] Nodes::Result load(const std::string &path, const std::string &station);
    bool isLoaded() const { return m_isLoaded; }
    const Nodes::systemCore &core() const { return *m_core; }
    std::string directory() const;

    Nodes::RecordHome home() const;
    /// Whether any node of the project has that id.
    bool has(unsigned long id) const;
    /// Null when the project has no such signal.
    const Nodes::BasicSignal *find(unsigned long id) const;
    /// As a station records it.
    Nodes::ArchiveSignalKey keyOf(const Nodes::BasicSignal &signal) const;

private:
    std::string stationName(const std::string &nameOrId) const;

    std::unique_ptr<Nodes::systemCore> m_core;
    bool m_isLoaded = false;
};

} // namespace Records
