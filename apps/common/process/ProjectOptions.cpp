#include "apps/common/process/ProjectOptions.h"

#include "apps/common/process/PasswordPrompt.h"

#include <CLI/CLI.hpp>

namespace Host {

namespace {

std::string checkDefine(const std::string &text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        return "\"" + text + "\" is not NAME=VALUE";
    return {};
}

} // namespace

void ProjectOptions::declareDefines(CLI::App &app, std::map<std::string, std::string> &defines)
{
    app.add_option_function<std::vector<std::string>>(
           "--define",
           [&defines](const std::vector<std::string> &pairs) {
               for (const std::string &pair : pairs)
                   defines[pair.substr(0, pair.find('='))] = pair.substr(pair.find('=') + 1);
           },
           "value of ${NAME} in the project; may be repeated")
        ->check(CLI::Validator(checkDefine, ""))
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
}

void ProjectOptions::declare(CLI::App &app)
{
    app.add_option("project", project, "project file, or directory holding project.xml")
        ->required()
        ->type_name("PROJECT");
    declareDefines(app, defines);
    app.add_option("--station", station,
                   "which of the project's stations to run (default: the first)")
        ->type_name("NAME");
    app.add_option("--data", dataDirectory,
                   "directory for journal and archive (default: in the user's data directory)")
        ->type_name("DIR");
    app.add_flag_callback(
        "--hash-password", [] { throw CLI::RuntimeError(printPasswordHash() ? 0 : UsageError); },
        "read a password from standard input, print its hash for a user of a project and exit");
}

} // namespace Host
