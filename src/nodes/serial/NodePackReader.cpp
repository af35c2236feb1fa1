#include "nodes/serial/NodePackReader.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ElementScan.h"
#include "nodes/serial/NodePackFormat.h"
#include "nodes/serial/NodePackValue.h"
#include "nodes/serial/XmlText.h"

#include <algorithm>

namespace Nodes {

namespace {

namespace type = msgpack::type;

/// Arrays around the properties of the deepest node, and a list inside them.
constexpr std::size_t nestingLimit = 2 * ConfigNode::MaximumDepth + 6;

bool isArray(const msgpack::object &object, std::size_t size)
{
    return object.type == type::ARRAY && object.via.array.size == size;
}

template <class Number> bool readNumber(const msgpack::object &object, Number &number)
{
    if (object.type != type::POSITIVE_INTEGER ||
        object.via.u64 > std::numeric_limits<Number>::max())
        return false;
    number = static_cast<Number>(object.via.u64);
    return true;
}

} // namespace

void NodePackReader::note(std::string text)
{
    if (m_notes.size() < MaximumNotes)
        m_notes.push_back(std::move(text));
}

std::nullptr_t NodePackReader::fail(std::string reason)
{
    if (m_failure)
        m_failure = Result(Result::ParseError, "packed nodes: " + reason);
    return nullptr;
}

Result NodePackReader::Read(std::string_view bytes, NodesContainer &nodes)
{
    if (bytes.size() > NodePackFormat::MaximumBytes)
        return Result(Result::LimitExceeded,
                      "packed nodes: " + std::to_string(bytes.size()) + " bytes");
    // A list of n items takes at least n bytes: larger announcements are lies.
    const std::size_t items = std::min(bytes.size(), NodePackFormat::MaximumNodes);
    const msgpack::unpack_limit limit(items, items, bytes.size(), 0, 0, nestingLimit);
    try {
        std::size_t end = 0;
        const msgpack::object_handle handle =
            msgpack::unpack(bytes.data(), bytes.size(), end, nullptr, nullptr, limit);
        if (end != bytes.size())
            return Result(Result::ParseError, "packed nodes: bytes left over");
        return readTop(handle.get(), nodes);
    } catch (const std::exception &error) { // how the unpacking library reports bad bytes
        return Result(Result::ParseError, std::string("packed nodes: ") + error.what());
    }
}

Result NodePackReader::readTop(const Object &top, NodesContainer &nodes)
{
    std::string signature;
    unsigned version = 0;
    if (!isArray(top, 3) || !ReadPackedText(top.via.array.ptr[0], signature) ||
        signature != NodePackFormat::Signature || !readNumber(top.via.array.ptr[1], version))
        return Result(Result::ParseError, "packed nodes: not of this format");
    if (version != NodePackFormat::Version)
        return Result(Result::ParseError,
                      "packed nodes: version " + std::to_string(version) + " is not supported");
    const Object &list = top.via.array.ptr[2];
    if (list.type != type::ARRAY)
        return Result(Result::ParseError, "packed nodes: no list of nodes");
    for (std::uint32_t i = 0; i < list.via.array.size; ++i) {
        if (std::unique_ptr<ConfigNode> node = readNode(list.via.array.ptr[i]))
            m_roots.push_back(std::move(node));
        if (!m_failure)
            return m_failure;
    }
    return hold(nodes);
}

Result NodePackReader::hold(NodesContainer &nodes)
{
    for (std::unique_ptr<ConfigNode> &root : m_roots) {
        RemapLinks(*root, m_ids);
        const NodeLink link(root.get());
        const Result held = m_project.HoldClone(root, true);
        if (!held)
            return held;
        nodes.Add(link);
    }
    return Result();
}

std::unique_ptr<ConfigNode> NodePackReader::readNode(const Object &object)
{
    if (++m_count > NodePackFormat::MaximumNodes)
        return fail("too many nodes");
    if (!isArray(object, NodePackFormat::NodeFields))
        return fail("a node is not complete");
    const Object *field = object.via.array.ptr;
    unsigned code = 0;
    unsigned long id = 0;
    std::string name;
    std::string description;
    if (!readNumber(field[0], code) || !readNumber(field[1], id) ||
        !ReadPackedText(field[2], name) || !ReadPackedText(field[3], description))
        return fail("a node has no readable kind, id or name");
    const KindInfo *kind = KindTable::Instance().Find(NodeType(NodeType::enNodeSubtype(code)));
    if (!kind) {
        note("kind " + std::to_string(code) + " of node " + std::to_string(id) + " is not known");
        return nullptr;
    }
    std::unique_ptr<ConfigNode> node = m_project.CreateDetached(*kind);
    if (id != 0)
        m_ids.emplace(id, node->GetId());
    node->SetName(std::move(name));
    node->SetDescription(std::move(description));
    readProperties(field[4], *node);
    readForeign(field[5], *node);
    readChildren(field[6], *node);
    return node;
}

void NodePackReader::readProperties(const Object &map, ConfigNode &node)
{
    if (map.type != type::MAP)
        return void(fail("properties are no map"));
    for (std::uint32_t i = 0; i < map.via.map.size; ++i) {
        const msgpack::object_kv &item = map.via.map.ptr[i];
        unsigned valueId = 0;
        const bool isNumber = readNumber(item.key, valueId);
        const PropertyDescriptor *d = isNumber ? node.GetKind()->FindProperty(valueId) : nullptr;
        if (!d || !ReadPackedValue(*d, node, item.val))
            note("property " + std::to_string(valueId) + " of " + node.GetKind()->key +
                 (d ? " has an unsuitable value" : " is not known"));
    }
}

void NodePackReader::readForeign(const Object &list, ConfigNode &node)
{
    if (list.type != type::ARRAY)
        return void(fail("foreign attributes are no list"));
    for (std::uint32_t i = 0; i < list.via.array.size; ++i) {
        const Object &pair = list.via.array.ptr[i];
        std::string key;
        std::string value;
        if (isArray(pair, 2) && ReadPackedText(pair.via.array.ptr[0], key) &&
            ReadPackedText(pair.via.array.ptr[1], value) && IsForeignKey(key))
            node.AddForeignAttribute(std::move(key), std::move(value));
        else
            note("foreign attribute of " + node.GetKind()->key + " does not read");
    }
}

void NodePackReader::readChildren(const Object &list, ConfigNode &node)
{
    if (list.type != type::ARRAY)
        return void(fail("children are no list"));
    // Its own are in its text: others would be hidden from every reader once it is saved.
    if (list.via.array.size > 0 && node.GetNodeType().GetSubtype() == NodeType::SubtypeUnknown)
        return void(fail("an unknown element has children"));
    for (std::uint32_t i = 0; i < list.via.array.size && m_failure; ++i) {
        if (std::unique_ptr<ConfigNode> child = readNode(list.via.array.ptr[i]))
            node.Append(std::move(child));
    }
}

} // namespace Nodes
