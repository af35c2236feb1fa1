#pragma once

#include "nodes/NodesExport.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace Nodes {

/// One piece of a Lua text, in bytes of it.
struct LuaToken
{
    enum enSort { Name, Keyword, Number, Text, Comment, Symbol };

    enSort sort;
    std::size_t begin;
    std::size_t length;

    std::string_view In(std::string_view text) const { return text.substr(begin, length); }
};

/// The pieces of a text in order, blanks left out. Takes every text: what is not closed reaches to
/// the end of its line or of the text.
NODES_EXPORT std::vector<LuaToken> LuaTokens(std::string_view text);

/// What a token of text names: without its quotes; escapes are left as they are.
NODES_EXPORT std::string_view LuaTextOf(std::string_view token);

/// Words that no name may have.
NODES_EXPORT const std::vector<std::string_view> &LuaKeywords();

} // namespace Nodes
