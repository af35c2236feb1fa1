#pragma once

namespace Widgets {

/// What a universal table lists.
enum UniversalTableType { UniversalTableNodes = 1, UniversalTableFiles = 2 };

} // namespace Widgets
