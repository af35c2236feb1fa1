#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QString>

#include <map>

namespace Nodes {
class ConfigNode;
class SheetColumns;
} // namespace Nodes

namespace Editor {

/// Columns that are worked out from elsewhere in the project: address over the wire, who archives.
/// GUI thread.
class SheetNotes
{
public:
    /// Adds the columns that suit the nodes below `scope`.
    static void addTo(Nodes::SheetColumns &columns, const Nodes::ConfigNode &scope,
                      unsigned family);

    /// Text of the note called `title` of the node.
    QString text(const std::string &title, const Nodes::ConfigNode &node) const;
    /// What was found out of the archive may have changed.
    void forget() { m_isRead = false; }

private:
    mutable bool m_isRead = false;
    mutable std::map<unsigned long, QString> m_archives; // by id of the signal
};

} // namespace Editor
