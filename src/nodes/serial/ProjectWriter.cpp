#include "nodes/serial/ProjectWriter.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/AtomicFile.h"
#include "nodes/serial/XmlText.h"

namespace Nodes {

std::string ProjectWriter::ToText(const NodesCollection &project)
{
    if (!project.GetRoot())
        return {};
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    WriteNodeXml(*project.GetRoot(), document);
    return PrintXml(document, pugi::format_indent);
}

Result ProjectWriter::WriteFile(const NodesCollection &project, const std::string &path)
{
    const std::string text = ToText(project);
    if (text.empty())
        return Result(Result::InvalidArgument, path + ": the project has no root");
    return ReplaceFile(path, text);
}

} // namespace Nodes
