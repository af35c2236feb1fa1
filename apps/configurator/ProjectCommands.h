#pragma once

#include <string>

namespace Configurator {

/// What scripts ask of projects, with no display: results on standard output, one a line; nothing
/// is written to the projects. Exit codes as of the command line tools of Unix.
namespace ProjectCommands {

enum enFormat {
    Text,     ///< for people
    Json,     ///< an object a line
    Compiler, ///< as compilers tell errors and warnings
};

/// Lists what is wrong: 0 when there are no errors (remarks are none unless it is strict), 1 when
/// there are or the project cannot be read. With the screens what is hard to read on them is listed
/// too, as remarks.
int check(const std::string &project, enFormat format, bool isStrict, bool withScreens);
/// Lists what differs: 0 nothing, 1 something, 2 when one of them cannot be read.
int diff(const std::string &before, const std::string &after, enFormat format);

} // namespace ProjectCommands

} // namespace Configurator
