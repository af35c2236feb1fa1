#include "utils/undo/DocumentUndo.h"

namespace Utils {

DocumentUndo::DocumentUndo(const Nodes::NodeLink &node, QObject *parent)
    : QUndoStack(parent), m_node(node)
{
}

DocumentUndo::~DocumentUndo() = default;

} // namespace Utils
