#pragma once

#include "editor/tree/TreeEdits.h"

#include "nodes/model/NodeType.h"
#include "nodes/model/NodesArray.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <QObject>
#include <QString>

#include <optional>

class QUndoCommand;

namespace Editor {

class Workspace;

/// What users do with the nodes of the project tree. Each is one step on the undo stack; what is
/// refused changes nothing, and the workspace tells why. GUI thread.
class NodeEdits : public QObject, public TreeEdits
{
    Q_OBJECT

public:
    /// The workspace outlives it.
    explicit NodeEdits(Workspace &workspace, QObject *parent = nullptr);
    ~NodeEdits() override;

    bool isAllowed() const override;
    bool rename(const Nodes::NodeLink &node, const QString &name) override;
    bool describe(const Nodes::NodeLink &node, const QString &text) override;
    bool takes(const Nodes::NodeLink &parent, const Nodes::NodeLinks &nodes,
               bool isCopy) const override;
    bool move(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
              const Nodes::NodeLink &before) override;
    Nodes::NodeLinks copyTo(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &parent,
                            const Nodes::NodeLink &before) override;

    /// New node as the last below `parent`; empty when it was refused.
    Nodes::NodeLink create(Nodes::NodeType type, const Nodes::NodeLink &parent);

    /// Below `node` where it takes them, else right after it. The nodes; none when neither takes
    /// them.
    Nodes::NodeLinks moveNear(const Nodes::NodeLinks &nodes, const Nodes::NodeLink &node);
    /// The same for what is on the clipboard.
    Nodes::NodeLinks pasteNear(const Nodes::NodeLink &node);
    /// Copies them right after the last of them.
    Nodes::NodeLinks duplicate(const Nodes::NodeLinks &nodes);
    /// Each one place up or down among its siblings; those at the end stay.
    bool shift(const Nodes::NodeLinks &nodes, bool isUp);
    /// Nodes that the project holds as clones come below `parent`.
    Nodes::NodeLinks insertCopies(const Nodes::NodesArray &copies, const Nodes::NodeLink &parent,
                                  const Nodes::NodeLink &before);
    /// Asks first where others refer to them (see Removal.h).
    bool remove(const Nodes::NodeLinks &nodes);

private:
    static Nodes::Result canTake(const Nodes::NodeLink &parent, const Nodes::NodeLinks &nodes,
                                 bool isCopy);
    bool push(QUndoCommand *command);
    /// Where nodes that are to come near `node` go.
    struct Place
    {
        Nodes::NodeLink parent;
        Nodes::NodeLink before;
    };
    static std::optional<Place> placeNear(const Nodes::NodeLink &node,
                                          const Nodes::NodeLinks &coming, bool isCopy);
    bool refuse(const QString &what, const Nodes::Result &why);

    Workspace &m_workspace;
};

} // namespace Editor
