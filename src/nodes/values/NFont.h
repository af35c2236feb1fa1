#pragma once

#include <string>

namespace Nodes {

/// Font of a text: family, size in points and style flags.
struct NFont
{
    std::string family = "DejaVu Sans";
    int pointSize = 11;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeOut = false;
    bool operator==(const NFont &o) const
    {
        return family == o.family && pointSize == o.pointSize && bold == o.bold &&
               italic == o.italic && underline == o.underline && strikeOut == o.strikeOut;
    }
    bool operator!=(const NFont &o) const { return !(*this == o); }
};

} // namespace Nodes
