#pragma once

#include <string>

namespace Nodes {

/// A message of the interpreter, taken apart.
struct LuaMessage
{
    int line = 0;     ///< from 1; 0 when it names none
    std::string text; ///< as the interpreter says it, without place
    std::string near; ///< the piece of the script it complains of; "<eof>" is its end; "" for none

    /// `message` begins with "name:line: ".
    static LuaMessage Of(const std::string &message);
    /// In Russian; what has no translation stays as it is.
    std::string ToRussian() const;
};

} // namespace Nodes
