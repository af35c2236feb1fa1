#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>
#include <QVector>

#include <utility>

class QXmlStreamWriter;

namespace Nodes {
class NodesCollection;
}

namespace Editor {

/// A node to be made, with what stands below it, as project files write it: kind by its key,
/// properties by theirs. A value. GUI thread.
class NodeRecipe
{
public:
    NodeRecipe(const QString &kind, const QString &name) : m_kind(kind), m_name(name) {}

    /// In place of what was set before.
    NodeRecipe &set(const QString &key, const QString &value);
    NodeRecipe &set(const QString &key, int value) { return set(key, QString::number(value)); }
    NodeRecipe &set(const QString &key, const Nodes::NodeLink &target);
    NodeRecipe &add(const NodeRecipe &child);

    /// The node with fresh ids, held by the project until a command takes it into the tree; leads
    /// nowhere when the kind is unknown.
    Nodes::NodeLink make(Nodes::NodesCollection &project) const;

private:
    void write(QXmlStreamWriter &xml) const;

    QString m_kind;
    QString m_name;
    QVector<std::pair<QString, QString>> m_properties;
    QVector<NodeRecipe> m_children;
};

} // namespace Editor
