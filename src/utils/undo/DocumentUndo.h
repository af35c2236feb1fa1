#pragma once

#include "utils/UtilsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QUndoStack>

namespace Utils {

/// Undo stack of one document: of the scene of a window, composition or template, or of the tree of
/// the project, whose document is the root. Made and owned by its UndoGroup. What is on it and
/// holds nodes destroys them with it. GUI thread.
class UTILS_EXPORT DocumentUndo : public QUndoStack
{
    Q_OBJECT

public:
    explicit DocumentUndo(const Nodes::NodeLink &node, QObject *parent = nullptr);
    ~DocumentUndo() override;

    /// What is edited; leads nowhere while the node is out of the tree.
    const Nodes::NodeLink &node() const { return m_node; }

private:
    Nodes::NodeLink m_node;
};

} // namespace Utils
