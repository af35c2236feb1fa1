#pragma once

#include <QHash>

namespace Nodes {
class ConfigNode;
}

namespace Editor {

/// How far screens are from what the frames of a project show at first. GUI thread.
class ScreenClicks
{
public:
    static constexpr int Most = 3; ///< of a screen that is soon at hand

    explicit ScreenClicks(const Nodes::ConfigNode &root);

    /// Presses that lead to that window or composition, by actions of elements and by menus, each
    /// level of which is one more; -1 for one that no action leads to.
    int to(const Nodes::ConfigNode &screen) const;
    /// Without a frame nothing is shown at first, and nothing can be told.
    bool hasFrames() const { return m_hasFrames; }

private:
    QHash<unsigned long, int> m_clicks; // by node id
    bool m_hasFrames = false;
};

} // namespace Editor
