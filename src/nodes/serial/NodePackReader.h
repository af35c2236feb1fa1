#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/values/Result.h"

#include <msgpack.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// Reads packed nodes into a project as detached nodes with fresh ids that the project holds as
/// clones. The bytes may come from anywhere.
class NodePackReader
{
public:
    explicit NodePackReader(NodesCollection &project) : m_project(project) {}

    /// ParseError for damaged bytes or those of a newer program, LimitExceeded for too many: no
    /// node is made then. Kinds, properties and values this program does not know are skipped and
    /// listed.
    [[nodiscard]] Result Read(std::string_view bytes, NodesContainer &nodes);

    /// English, one a skipped item; at most MaximumNotes.
    const std::vector<std::string> &GetNotes() const { return m_notes; }

private:
    static constexpr std::size_t MaximumNotes = 100;

    using Object = msgpack::object;

    Result readTop(const Object &top, NodesContainer &nodes);
    Result hold(NodesContainer &nodes);
    std::unique_ptr<ConfigNode> readNode(const Object &object);
    void readProperties(const Object &map, ConfigNode &node);
    void readForeign(const Object &list, ConfigNode &node);
    void readChildren(const Object &list, ConfigNode &node);
    void note(std::string text);
    std::nullptr_t fail(std::string reason);

    NodesCollection &m_project;
    IdMap m_ids;
    std::size_t m_count = 0;
    std::vector<std::string> m_notes;
    std::vector<std::unique_ptr<ConfigNode>> m_roots;
    Result m_failure;
};

} // namespace Nodes
