#pragma once

#include "widgets/windows/WindowBasic.h"

#include <QHash>

namespace Nodes {
class BasicComposition;
}

namespace Widgets {

class ProxyScene;

/// A composed window: shows one composition at a time. Scenes of compositions that ask to be kept
/// stay, stopped, while another is shown.
class WIDGETS_EXPORT WindowComposite : public WindowBasic
{
    Q_OBJECT

public:
    WindowComposite(Nodes::BasicWindow *node, QWidget *parent);

    /// Shows the composition and starts it; null changes nothing. The window may move when the
    /// node asks for it: callers that want it to stay restore its position.
    void LoadComposition(Nodes::BasicComposition *composition);
    /// Composition shown now; null before the first and when it was deleted.
    Nodes::BasicComposition *composition() const;

private:
    bool enterScene(Nodes::BasicComposition &composition);

    Utils::WatchedNode<Nodes::BasicComposition> m_composition;
    unsigned long m_compositionId = 0;
    QHash<unsigned long, ProxyScene *> m_kept; // by composition id; children of the view
};

} // namespace Widgets
