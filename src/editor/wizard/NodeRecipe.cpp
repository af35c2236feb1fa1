#include "editor/wizard/NodeRecipe.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace Editor {

NodeRecipe &NodeRecipe::set(const QString &key, const QString &value)
{
    const auto known = std::find_if(m_properties.begin(), m_properties.end(),
                                    [&key](const auto &property) { return property.first == key; });
    if (known == m_properties.end())
        m_properties.append({key, value});
    else
        known->second = value;
    return *this;
}

NodeRecipe &NodeRecipe::set(const QString &key, const Nodes::NodeLink &target)
{
    return set(key, QString::number(target.GetNodeId()));
}

NodeRecipe &NodeRecipe::add(const NodeRecipe &child)
{
    m_children.append(child);
    return *this;
}

void NodeRecipe::write(QXmlStreamWriter &xml) const
{
    xml.writeStartElement(m_kind);
    xml.writeAttribute(QStringLiteral("name"), m_name);
    for (const auto &[key, value] : m_properties)
        xml.writeAttribute(key, value);
    for (const NodeRecipe &child : m_children)
        child.write(xml);
    xml.writeEndElement();
}

Nodes::NodeLink NodeRecipe::make(Nodes::NodesCollection &project) const
{
    const Nodes::KindInfo *kind = Nodes::KindTable::Instance().FindByKey(m_kind.toStdString());
    const Nodes::NodeLink link(kind ? project.CreateNode(kind->type, nullptr) : nullptr);
    if (!link.isValid())
        return {};
    QString text;
    QXmlStreamWriter xml(&text);
    write(xml);
    if (link->DeserializeXML(text.toStdString()))
        return link;
    (void)project.TakeClone(link);
    return {};
}

} // namespace Editor
