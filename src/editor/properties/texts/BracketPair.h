#pragma once

#include <QString>

#include <optional>
#include <utility>

namespace Editor {

/// Places of the bracket beside the cursor (before it, else behind it) and of its partner; the same
/// place twice when it has none. Nothing when no bracket is there. In Lua texts, brackets in quotes
/// and comments do not count.
std::optional<std::pair<int, int>> bracketPair(const QString &text, int cursor, bool isLua);

} // namespace Editor
