#pragma once

#include <string>
#include <string_view>

namespace Records {

/// Fields of the tables of this program.
namespace TableText {

/// In quotes, those in it doubled; line breaks stay as they are.
std::string quoted(std::string_view text);

} // namespace TableText

} // namespace Records
