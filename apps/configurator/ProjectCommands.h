#pragma once

#include <string>

namespace Configurator {

/// What scripts ask of projects, with no display: results on standard output, one a line; nothing
/// is written to the projects. Exit codes as of the command line tools of Unix.
namespace ProjectCommands {

/// Lists what is wrong: 0 when there are no errors (remarks are no errors), 1 when there are or the
/// project cannot be read.
int check(const std::string &project, bool isJson);
/// Lists what differs: 0 nothing, 1 something, 2 when one of them cannot be read.
int diff(const std::string &before, const std::string &after);

} // namespace ProjectCommands

} // namespace Configurator
