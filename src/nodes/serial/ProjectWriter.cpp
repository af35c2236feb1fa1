#include "nodes/serial/ProjectWriter.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/AtomicFile.h"
#include "nodes/serial/ElementScan.h"
#include "nodes/serial/LoadLimits.h"
#include "nodes/serial/XmlText.h"

#include <string_view>

namespace Nodes {

namespace {

/// Finds what a reader would refuse, so that nothing is saved that cannot be loaded.
class LimitCheck : public pugi::xml_tree_walker
{
public:
    bool for_each(pugi::xml_node &node) override
    {
        ++m_count;
        for (const pugi::xml_attribute &attribute : node.attributes()) {
            if (std::string_view(attribute.value()).size() <= m_limits.attributeLength ||
                isKeptAside(node))
                continue;
            fault = std::string(attribute.name()) + " of node " + node.attribute("id").value() +
                    " is longer than " + std::to_string(m_limits.attributeLength) + " bytes";
        }
        if (m_count > m_limits.nodes)
            fault = "more than " + std::to_string(m_limits.nodes) + " elements";
        return fault.empty();
    }

    std::string fault;

private:
    /// Part of an element that a reader keeps without looking into it.
    static bool isKeptAside(pugi::xml_node node)
    {
        while (node.type() == pugi::node_element && IsRegisteredElement(node))
            node = node.parent();
        return node.type() == pugi::node_element;
    }

    const LoadLimits m_limits{};
    std::size_t m_count = 0;
};

// What belongs to the project as a whole rather than to its root node.
void writeIdentity(const NodesCollection &project, pugi::xml_node root)
{
    const pugi::xml_attribute format = root.attribute("format");
    pugi::xml_attribute uuid = root.insert_attribute_after("uuid", format);
    uuid.set_value(project.GetUuid().c_str());
    root.insert_attribute_after("lastId", uuid) = std::to_string(project.GetLastId()).c_str();
}

void fill(pugi::xml_document &document, const NodesCollection &project)
{
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    WriteNodeXml(*project.GetRoot(), document);
    writeIdentity(project, document.document_element());
}

} // namespace

std::string ProjectWriter::ToText(const NodesCollection &project)
{
    if (!project.GetRoot())
        return {};
    pugi::xml_document document;
    fill(document, project);
    return PrintXml(document, pugi::format_indent);
}

Result ProjectWriter::MakeText(const NodesCollection &project, const std::string &path,
                               std::string &text)
{
    if (!project.GetRoot())
        return Result(Result::InvalidArgument, path + ": the project has no root");
    for (const auto &[key, value] : project.GetRoot()->GetForeignAttributes()) {
        if (key == NewerFormatKey)
            return Result(Result::ReadOnly, path + ": the project is of format " + value +
                                                ", which only a newer program can save");
    }
    pugi::xml_document document;
    fill(document, project);
    LimitCheck check;
    document.traverse(check);
    text = PrintXml(document, pugi::format_indent);
    if (check.fault.empty() && text.size() > LoadLimits().fileSize)
        check.fault = "larger than " + std::to_string(LoadLimits().fileSize) + " bytes";
    if (!check.fault.empty())
        return Result(Result::LimitExceeded, path + ": " + check.fault);
    return {};
}

Result ProjectWriter::WriteFile(const NodesCollection &project, const std::string &path)
{
    std::string text;
    const Result made = MakeText(project, path, text);
    return made ? ReplaceFile(path, text) : made;
}

} // namespace Nodes
