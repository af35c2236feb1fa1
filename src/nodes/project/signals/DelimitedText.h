#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

using TextTable = std::vector<std::vector<std::string>>;

/// Tables as spreadsheets exchange them: fields parted by a tab, a semicolon or a comma, put in
/// quotes where they contain such, a quote or a line end; quotes within are doubled (RFC 4180).
/// UTF-8. Any thread.
namespace DelimitedText {

/// Tab, ';' or ',': the one that parts most fields of the first line, quoted ones left out; tab
/// where there is none.
NODES_EXPORT char RecogniseSeparator(std::string_view text);
/// Reads the whole text; a byte order mark and the line end behind the last row do not count, and
/// blanks belong to their field. ParseError, in Russian with the line, for a quote that is never
/// closed and for text that is not UTF-8: `table` then holds nothing.
[[nodiscard]] NODES_EXPORT Result Read(std::string_view text, char separator, TextTable &table);
/// Text that Read takes for the same table. `lineEnd`: "\r\n" in files, "\n" in the clipboard.
NODES_EXPORT std::string Write(const TextTable &table, char separator,
                               std::string_view lineEnd = "\r\n");
/// Put before the text of a file, tells spreadsheets that it is UTF-8.
inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

} // namespace DelimitedText

} // namespace Nodes
