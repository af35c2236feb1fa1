#pragma once

#include "nodes/model/NodesArray.h"
#include "utils/undo/Interaction.h"

#include <QString>
#include <boost/any.hpp>

#include <functional>
#include <vector>

class QUndoCommand;

namespace Nodes {
class ConfigNode;
class NodesCollection;
struct PropertyDescriptor;
} // namespace Nodes

namespace Utils {
class NodeCommand;
}

namespace Editor {

/// Changes of properties of one node or many, each a single undoable step that is made whole or not
/// at all. Each answers "" when it was made or there was nothing to do, else why not, in Russian.
/// GUI thread.
class PropertyEdits
{
public:
    /// Executes the command as a step, unless it is executed already, and takes it over; false when
    /// nothing may be changed.
    using Push = std::function<bool(QUndoCommand *)>;

    explicit PropertyEdits(Push push) : m_push(std::move(push)) {}

    /// While not empty nothing is changed, for that reason.
    void setReadOnly(const QString &reason) { m_readOnly = reason; }
    const QString &readOnly() const { return m_readOnly; }

    /// `text` as project files write it. Steps of one interaction become one.
    QString setProperty(const Nodes::NodesArray &nodes, const Nodes::PropertyDescriptor &descriptor,
                        const QString &text, const Utils::Interaction &interaction = {});
    /// Several properties of the nodes as one step called `what`; nodes go without those that
    /// their kind does not have.
    using Texts = std::vector<std::pair<unsigned, QString>>;
    QString setProperties(const Nodes::NodesArray &nodes, const Texts &texts, const QString &what);
    QString setName(const Nodes::NodeLink &node, const QString &name);
    QString setDescription(const Nodes::NodesArray &nodes, const QString &text);
    /// Makes the command and hands it on.
    QString push(Utils::NodeCommand *command);

private:
    Push m_push;
    QString m_readOnly;
};

} // namespace Editor
