#pragma once

#include <cstddef>
#include <string>

namespace Nodes {

/// What is wrong with a text, and where: bytes of it.
struct TextProblem
{
    std::size_t begin;
    std::size_t length;    ///< 0 at the end of the text
    std::string message;   ///< Russian
    bool isRemark = false; ///< the text can be used nevertheless
};

} // namespace Nodes
