#include "apps/common/process/ProgramName.h"

#include <cerrno>

namespace Host {

std::string ProgramName()
{
    return program_invocation_short_name;
}

} // namespace Host
