#include "nodes/serial/XmlText.h"

#include "nodes/model/KindInfo.h"
#include "nodes/serial/ElementScan.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/UnknownNode.h"
#include "nodes/serial/Utf8.h"
#include "nodes/serial/XmlSource.h"

#include <algorithm>
#include <cctype>
#include <unordered_set>

namespace Nodes {

namespace {

void writeElement(const ConfigNode &node, pugi::xml_node parent);

struct StringWriter : pugi::xml_writer
{
    std::string text;
    void write(const void *data, std::size_t size) override
    {
        text.append(static_cast<const char *>(data), size);
    }
};

std::string wellFormed(const std::string &text)
{
    std::string good = text;
    while (const auto offset = FindInvalidUtf8(good))
        good.replace(*offset, 1, "\uFFFD");
    return good;
}

void setAttribute(pugi::xml_node element, const char *key, const std::string &value)
{
    pugi::xml_attribute attribute = element.append_attribute(key);
    if (FindInvalidUtf8(value))
        attribute.set_value(wellFormed(value).c_str());
    else
        attribute.set_value(value.c_str());
}

/// `implied`: what a reader takes for an attribute that is not there.
void overwrite(pugi::xml_node element, const char *key, const std::string &value,
               const std::string &implied)
{
    pugi::xml_attribute attribute = element.attribute(key);
    if (!attribute && value != implied)
        attribute = element.append_attribute(key);
    if (attribute && attribute.value() != value)
        attribute.set_value(wellFormed(value).c_str());
}

/// Element of the text when it holds exactly one that may stand at this place.
pugi::xml_node parseUnknown(pugi::xml_document &document, const UnknownNode &node)
{
    const std::string &xml = node.GetXml();
    const bool isText =
        !xml.empty() && !FindInvalidUtf8(xml) &&
        document.load_buffer(xml.data(), xml.size(), XmlSource::ParseFlags, pugi::encoding_utf8);
    const pugi::xml_node element = document.document_element();
    const int levels = LoadLimits().depth + 1 - static_cast<int>(node.GetPathNodes().size());
    const bool isSingle = isText && document.first_child() == document.last_child();
    return isSingle && !ElementScan(element).Run(levels) ? element : pugi::xml_node();
}

// The element goes out as it came in, but for what could be edited here, and always with its id:
// given anew at each reading, it would be another one after each save.
void writeUnknown(const UnknownNode &node, pugi::xml_node parent)
{
    pugi::xml_document document;
    const pugi::xml_node source = parseUnknown(document, node);
    if (!source)
        return writeElement(node, parent);
    pugi::xml_node element = parent.append_copy(source);
    overwrite(element, "id", std::to_string(node.GetId()), {});
    overwrite(element, "name", node.GetName(), element.name());
    overwrite(element, "description", node.GetDescription(), {});
}

void writeForeign(const ConfigNode &node, pugi::xml_node element)
{
    std::unordered_set<std::string_view> taken;
    if (!node.GetForeignAttributes().empty()) {
        for (const pugi::xml_attribute &attribute : element.attributes())
            taken.insert(attribute.name());
    }
    for (const auto &[key, value] : node.GetForeignAttributes()) {
        if (key == CommentKey)
            element.append_child(pugi::node_comment).set_value(wellFormed(value).c_str());
        else if (key == TextKey)
            element.append_child(pugi::node_pcdata).set_value(wellFormed(value).c_str());
        else if (key != NewerFormatKey && taken.insert(key).second)
            setAttribute(element, key.c_str(), value);
    }
}

void writeAttributes(const ConfigNode &node, pugi::xml_node element)
{
    setAttribute(element, "id", std::to_string(node.GetId()));
    if (!node.GetName().empty())
        setAttribute(element, "name", node.GetName());
    if (!node.GetDescription().empty())
        setAttribute(element, "description", node.GetDescription());
    const KindInfo &kind = *node.GetKind();
    for (const PropertyDescriptor &d : kind.properties) {
        if (!kind.IsDefault(d, node))
            setAttribute(element, d.key.c_str(), d.binding.format(d, node));
    }
    writeForeign(node, element);
}

void writeElement(const ConfigNode &node, pugi::xml_node parent)
{
    pugi::xml_node element = parent.append_child(node.GetKind()->key.c_str());
    const bool isProject = node.GetNodeType().GetSubtype() == NodeType::SubtypeProject;
    if (isProject && parent.type() == pugi::node_document)
        setAttribute(element, "format", std::to_string(ProjectReader::Format));
    writeAttributes(node, element);
    for (const auto &child : node.Children())
        WriteNodeXml(*child, element);
}

bool isNameByte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return std::isalnum(byte) != 0 || byte >= 0x80 || c == '_' || c == '-' || c == '.' || c == ':';
}

} // namespace

bool IsForeignKey(const std::string &key)
{
    if (key == CommentKey || key == TextKey)
        return true;
    const bool isNamed = !key.empty() && std::all_of(key.begin(), key.end(), isNameByte);
    return isNamed && std::isdigit(static_cast<unsigned char>(key.front())) == 0 &&
           key.front() != '-' && key.front() != '.';
}

std::string PrintXml(const pugi::xml_node &node, unsigned flags)
{
    StringWriter writer;
    node.print(writer, "  ", flags, pugi::encoding_utf8);
    return std::move(writer.text);
}

void WriteNodeXml(const ConfigNode &node, pugi::xml_node parent)
{
    if (const auto *unknown = dynamic_cast<const UnknownNode *>(&node))
        writeUnknown(*unknown, parent);
    else
        writeElement(node, parent);
}

} // namespace Nodes
