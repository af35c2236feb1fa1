#pragma once

#include <string>
#include <string_view>

namespace Records {

/// Texts as JSON has them.
namespace JsonText {

/// In quotes; what is no UTF-8 stays as it is.
std::string quoted(std::string_view text);

} // namespace JsonText

} // namespace Records
