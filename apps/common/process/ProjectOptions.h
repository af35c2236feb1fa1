#pragma once

#include <map>
#include <string>

namespace CLI {
class App;
}

namespace Host {

/// The options that every program on a project has: which project, which of its stations, which
/// data. Declares them only; parsing is the program's.
struct ProjectOptions
{
    std::string project;       ///< file, or directory holding "project.xml"
    std::string station;       ///< name of the project's station to be; "" for the first
    std::string dataDirectory; ///< "" for the default of the project
    std::map<std::string, std::string> defines;

    /// Adds PROJECT (required), --define, --station and --data, and --hash-password, which ends
    /// parsing. The object outlives `app`.
    void declare(CLI::App &app);

    /// Adds --define alone; the map outlives `app`.
    static void declareDefines(CLI::App &app, std::map<std::string, std::string> &defines);

    /// Of the command line that was not understood.
    static constexpr int UsageError = 2;
};

} // namespace Host
