#pragma once

#include <QVector>

class QWidget;

namespace Nodes {
class ConfigNode;
class NodeLink;
} // namespace Nodes

namespace Editor {

class DocumentView;
class Workspace;

/// One kind of document.
struct DocumentRow
{
    bool (*shows)(const Nodes::ConfigNode &node);
    DocumentView *(*make)(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
};

/// The first row that shows a node opens it.
const QVector<DocumentRow> &DocumentTable();
/// Null when no row shows the node.
const DocumentRow *FindDocument(const Nodes::ConfigNode &node);

} // namespace Editor
