#include "apps/configurator/ConfiguratorOptions.h"

#include "apps/common/process/ProjectOptions.h"

#include <CLI/CLI.hpp>

namespace Configurator {

std::optional<int> ConfiguratorOptions::parse(int argc, char **argv)
{
    CLI::App app("Project configurator: makes and edits projects of the operator station");
    app.add_option("PROJECT", project, "project to open: project.xml or its directory");
    app.add_option("--platform", platform, "Qt platform plug-in")->type_name("NAME");
    app.add_option("--station", station,
                   "program that shows the project (default: station beside this one)")
        ->type_name("FILE");
    app.add_option("--station-option", stationOptions,
                   "an option that the station is started with, such as "
                   "--station-option=--define=plant.port=1502; may be repeated")
        ->type_name("OPTION")
        ->allow_extra_args(false);
    Host::ProjectOptions::declareDefines(app, defines);
    app.add_option("--ui-map", uiMap,
                   "keep a list of the visible controls in this file, for scripts")
        ->type_name("FILE");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : Host::ProjectOptions::UsageError;
    }
    return std::nullopt;
}

} // namespace Configurator
