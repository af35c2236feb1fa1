#pragma once

#include <QString>

#include <string>

namespace Editor {

/// Characters of a line or an edit for bytes of the node model.
inline int characterAt(const std::string &text, std::size_t byte)
{
    return QString::fromUtf8(text.data(), int(byte)).size();
}

} // namespace Editor
