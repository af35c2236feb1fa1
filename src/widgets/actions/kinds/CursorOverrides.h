#pragma once

namespace Widgets {

/// Pointers that actions have put over the application's, apart from those of the library itself:
/// restoring takes back only what an action gave. GUI thread.
class CursorOverrides
{
public:
    static void give(int cursorShape);
    static void restore();

private:
    static inline int m_depth = 0;
};

} // namespace Widgets
