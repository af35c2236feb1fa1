#pragma once

#include <string>

namespace Host {

/// Name of this program as its messages begin with, its folder left out.
std::string ProgramName();

} // namespace Host
