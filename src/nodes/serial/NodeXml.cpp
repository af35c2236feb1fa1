#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/serial/ElementReader.h"
#include "nodes/serial/NodeGraft.h"
#include "nodes/serial/XmlText.h"

namespace Nodes {

std::string ConfigNode::SerializeXML() const
{
    if (!m_kind)
        return {};
    pugi::xml_document document;
    WriteNodeXml(*this, document);
    return PrintXml(document, pugi::format_indent | pugi::format_no_declaration);
}

Result ConfigNode::DeserializeXML(std::string_view xml)
{
    NodesCollection *project = GetNodesCollection();
    if (!m_kind || !project)
        return Result(this, Result::NotAvailable, "the node is part of no project");
    XmlSource source{std::string(xml)};
    if (const auto fault = source.Parse(LoadLimits()))
        return Result(this, fault->type, fault->english);
    const pugi::xml_node element = source.GetRoot();
    if (element.name() != m_kind->key)
        return Result(this, Result::WrongType,
                      std::string(element.name()) + " instead of " + m_kind->key);
    ElementScan scan(element);
    if (scan.Run(LoadLimits().depth))
        return Result(this, Result::LimitExceeded, "elements nested too deep");
    LoadReport report;
    ElementReader reader(source, scan, *project, report, ElementReader::FreshIds);
    std::unique_ptr<ConfigNode> read = reader.Read(element);
    if (!read)
        return Result(this, reader.GetFault()->type, reader.GetFault()->english);
    return Graft(*this, std::move(read), reader.GetIds());
}

} // namespace Nodes
