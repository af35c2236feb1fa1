#include "apps/configurator/ConfiguratorOptions.h"

#include "apps/common/process/ProjectOptions.h"
#include "apps/configurator/ProjectCommands.h"

#include <CLI/CLI.hpp>

namespace Configurator {

void ConfiguratorOptions::declareCommands(CLI::App &app)
{
    CLI::Option *checking =
        app.add_option("--check", check,
                       "list what is wrong with a project as FILE:LINE: PATH: TEXT and exit: 0 no "
                       "errors, 1 errors; needs no display")
            ->type_name("PROJECT");
    app.add_option("--diff", compared,
                   "list what differs from project A to B and exit: 0 nothing, 1 something, 2 one "
                   "of them cannot be read; needs no display")
        ->expected(2)
        ->type_name("A B")
        ->excludes(checking);
    app.add_option_function<std::string>(
           "--format",
           [this](const std::string &word) {
               format = word == "json"  ? ProjectCommands::Json
                        : word == "gcc" ? ProjectCommands::Compiler
                                        : ProjectCommands::Text;
           },
           "of the list: text; json, an object a line; gcc, for --check: FILE:LINE:1: "
           "error|warning: PATH: TEXT [CODE], as build servers read it (default: text)")
        ->check(CLI::IsMember({"text", "json", "gcc"}))
        ->type_name("FORMAT");
    app.add_flag("--strict", isStrict, "of --check: remarks count as errors")->needs(checking);
    app.add_flag("--screens", withScreens,
                 "of --check: also what is hard to read on screens, as remarks")
        ->needs(checking);
}

std::optional<int> ConfiguratorOptions::runCommand() const
{
    if (!check.empty())
        return ProjectCommands::check(check, format, isStrict, withScreens);
    if (!compared.empty())
        return ProjectCommands::diff(compared.front(), compared.back(), format);
    return std::nullopt;
}

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
    declareCommands(app);
    try {
        app.parse(argc, argv);
        if (format != ProjectCommands::Text && check.empty() && compared.empty())
            throw CLI::ValidationError("--format", "is for --check and --diff");
        if (format == ProjectCommands::Compiler && check.empty())
            throw CLI::ValidationError("--format gcc", "is for --check");
    } catch (const CLI::ParseError &error) {
        return app.exit(error) == 0 ? 0 : Host::ProjectOptions::UsageError;
    }
    return runCommand();
}

} // namespace Configurator
