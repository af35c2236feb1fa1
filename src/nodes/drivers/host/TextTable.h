#pragma once

#include <string_view>
#include <vector>

namespace Nodes {

/// The words of a line, separated by blanks and tabs; views into the line.
std::vector<std::string_view> SplitWords(std::string_view line);

/// Calls `visit(line)` for each line until it returns true; whether one did.
template <class Visitor> bool FindLine(std::string_view text, Visitor visit)
{
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (visit(text.substr(0, end)))
            return true;
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return false;
}

} // namespace Nodes
