#pragma once

#include "apps/configurator/ProjectCommands.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace Configurator {

/// The command line.
struct ConfiguratorOptions
{
    std::string project;  ///< file or directory to open; "" for none
    std::string platform; ///< Qt platform plug-in; "" lets Qt choose
    std::string station;  ///< program of the station; "" for the one beside this program
    std::vector<std::string> stationOptions; ///< what it is started with besides the project
    std::map<std::string, std::string>
        defines;       ///< what ${NAME} stands for, here and in the station
    std::string uiMap; ///< file for UiMap; "" for none

    std::string check;                 ///< project to check; "" for none
    std::vector<std::string> compared; ///< the two projects to compare; empty for none
    ProjectCommands::enFormat format = ProjectCommands::Text;
    bool isStrict = false;    ///< remarks count as errors
    bool withScreens = false; ///< the check looks at screens, too

    /// Exit code when the program is done with that, as after --help and --check; nothing to go on.
    std::optional<int> parse(int argc, char **argv);

private:
    void declareCommands(CLI::App &app);
    /// Nothing when no command is asked for.
    std::optional<int> runCommand() const;
};

} // namespace Configurator
