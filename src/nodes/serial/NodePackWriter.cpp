#include "nodes/serial/NodePackWriter.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/serial/NodePackFormat.h"
#include "nodes/values/NColor.h"

#include <msgpack.hpp>

#include <unordered_set>

namespace Nodes {

namespace {

using Packer = msgpack::packer<msgpack::sbuffer>;

std::uint32_t length(std::size_t size)
{
    return static_cast<std::uint32_t>(size);
}

void packText(Packer &packer, const std::string &text)
{
    packer.pack_str(length(text.size()));
    packer.pack_str_body(text.data(), length(text.size()));
}

void packColor(Packer &packer, const NColor &color)
{
    packer.pack_uint32(std::uint32_t(color.red) << 24 | std::uint32_t(color.green) << 16 |
                       std::uint32_t(color.blue) << 8 | color.alpha);
}

void packLinks(Packer &packer, const NodeLinks &links)
{
    packer.pack_array(length(links.size()));
    for (const NodeLink &link : links)
        packer.pack_uint64(link.GetNodeId());
}

void packValue(Packer &packer, const PropertyDescriptor &d, const ConfigNode &node)
{
    const void *data = d.binding.data(node);
    switch (d.binding.type) {
    case PropertyType::Bool:
        return void(packer.pack(*static_cast<const bool *>(data)));
    case PropertyType::Int:
        return void(packer.pack(*static_cast<const int *>(data)));
    case PropertyType::UInt:
        return void(packer.pack(*static_cast<const unsigned *>(data)));
    case PropertyType::Double:
        return void(packer.pack_double(*static_cast<const double *>(data)));
    case PropertyType::Color:
        return packColor(packer, *static_cast<const NColor *>(data));
    case PropertyType::Link:
        return void(packer.pack_uint64(static_cast<const NodeLink *>(data)->GetNodeId()));
    case PropertyType::Links:
        return packLinks(packer, *static_cast<const NodeLinks *>(data));
    case PropertyType::Resource:
        return packText(packer, static_cast<const ResourceLink *>(data)->GetFilePath());
    case PropertyType::String:
    case PropertyType::Secret:
        return packText(packer, *static_cast<const std::string *>(data));
    }
}

void packProperties(Packer &packer, const ConfigNode &node)
{
    const KindInfo &kind = *node.GetKind();
    std::vector<const PropertyDescriptor *> changed;
    for (const PropertyDescriptor &d : kind.properties) {
        if (!kind.IsDefault(d, node))
            changed.push_back(&d);
    }
    packer.pack_map(length(changed.size()));
    for (const PropertyDescriptor *d : changed) {
        packer.pack_uint32(d->valueId);
        packValue(packer, *d, node);
    }
}

void packForeign(Packer &packer, const ConfigNode &node)
{
    packer.pack_array(length(node.GetForeignAttributes().size()));
    for (const auto &[key, value] : node.GetForeignAttributes()) {
        packer.pack_array(2);
        packText(packer, key);
        packText(packer, value);
    }
}

void packNode(Packer &packer, const ConfigNode &node)
{
    packer.pack_array(length(NodePackFormat::NodeFields));
    packer.pack_uint32(node.GetNodeType().GetCode());
    packer.pack_uint64(node.GetId());
    packText(packer, node.GetName());
    packText(packer, node.GetDescription());
    packProperties(packer, node);
    packForeign(packer, node);
    packer.pack_array(length(node.Children().size()));
    for (const auto &child : node.Children())
        packNode(packer, *child);
}

std::vector<const ConfigNode *> topmost(const NodesContainer &nodes)
{
    std::unordered_set<const ConfigNode *> given;
    for (const NodeLink &link : nodes)
        given.insert(link.GetNode());
    std::vector<const ConfigNode *> found;
    for (const NodeLink &link : nodes) {
        const ConfigNode *node = link.GetNode();
        const ConfigNode *above = node ? node->GetParent() : nullptr;
        while (above && !given.count(above))
            above = above->GetParent();
        if (node && node->GetKind() && !above)
            found.push_back(node);
    }
    return found;
}

} // namespace

std::string PackNodes(const NodesContainer &nodes)
{
    const std::vector<const ConfigNode *> found = topmost(nodes);
    msgpack::sbuffer buffer(NodePackFormat::FirstBufferSize);
    Packer packer(buffer);
    packer.pack_array(3);
    packText(packer, NodePackFormat::Signature);
    packer.pack(NodePackFormat::Version);
    packer.pack_array(length(found.size()));
    for (const ConfigNode *node : found)
        packNode(packer, *node);
    return std::string(buffer.data(), buffer.size());
}

} // namespace Nodes
