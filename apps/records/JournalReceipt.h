#pragma once

#include "nodes/journal/JournalLink.h"
#include "nodes/values/Result.h"

#include <string>
#include <string_view>

namespace Records {

/// What proves a journal up to a row, to be kept where nobody who can change the journal gets at
/// it: "row:hash", the hash in hexadecimal digits.
namespace JournalReceipt {

std::string format(const Nodes::JournalLink &row);
/// ParseError says what is wrong with the text.
[[nodiscard]] Nodes::Result parse(std::string_view text, Nodes::JournalLink &row);
std::string digitsOf(std::string_view bytes);

} // namespace JournalReceipt

} // namespace Records
