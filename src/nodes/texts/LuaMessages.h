#pragma once

#include "nodes/NodesExport.h"

#include <cstddef>
#include <string>

namespace Nodes {

/// A message of the interpreter, or of what the system adds to it, taken apart.
struct NODES_EXPORT LuaMessage
{
    int line = 0;     ///< from 1; 0 when it names none
    std::string text; ///< as the interpreter says it, without place
    /// The piece of the script it complains of, of a letter outside of ASCII its first byte;
    /// "<eof>" is its end; "" for none.
    std::string near;

    /// `message` begins with "name:line: ".
    static LuaMessage Of(const std::string &message);
    /// In Russian and short; what has no translation stays as it is.
    std::string ToRussian() const;
};

/// The text, or as much of it as `most` bytes take and "…".
std::string ShortText(const std::string &text, std::size_t most);

} // namespace Nodes
