#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkCycles.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/validation/ValidationResults.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>

namespace Nodes {

namespace {

/// Collects findings about one node, each prefixed with its path.
class NodeCheck
{
public:
    NodeCheck(const ConfigNode &node, ValidationResults &results) : m_node(node), m_results(results)
    {
    }

    void Links()
    {
        VisitLinks(
            m_node, *m_node.GetKind(),
            [this](const PropertyDescriptor &d, const NodeLink &link) { checkLink(d, link); });
    }
    void Cycles()
    {
        for (const LinkCycle &cycle : FindLinkCycles({&m_node})) {
            if (cycle.target == &m_node)
                add(Result::Cycle, "свойство «" + cycle.property->nameRu + "» узла «" +
                                       cycle.node->GetPath() +
                                       "» ведёт обратно к этому узлу. Разорвите кольцо ссылок.");
        }
    }
    void Resources()
    {
        for (const PropertyDescriptor &d : m_node.GetKind()->properties) {
            if (d.binding.type == PropertyType::Resource)
                checkResource(d, *static_cast<const ResourceLink *>(d.binding.data(m_node)));
        }
    }
    void Children()
    {
        std::unordered_set<std::string_view> names;
        for (const auto &child : m_node.Children()) {
            checkKind(*child);
            if (!child->GetName().empty() && !names.insert(child->GetName()).second)
                add(Result::Duplicate, "несколько вложенных узлов называются «" + child->GetName() +
                                           "». Дайте им разные имена.");
        }
    }
    void ForeignAttributes()
    {
        for (const auto &[key, value] : m_node.GetForeignAttributes()) {
            if (key.front() != '#')
                add(Result::InvalidArgument, "атрибут «" + key + "» со значением «" + value +
                                                 "» не действует. Исправьте или удалите его.");
        }
    }

private:
    void add(Result::ResultType type, const std::string &text)
    {
        m_results.Add(m_node.GetNodeLink(), Result(&m_node, type),
                      (m_node.GetPath().empty() ? m_node.GetName() : m_node.GetPath()) + ": " +
                          text);
    }
    void checkLink(const PropertyDescriptor &d, const NodeLink &link)
    {
        const ConfigNode *target = link.GetNode();
        if (!target)
            return add(Result::NotFound, "свойство «" + d.nameRu + "» ссылается на узел " +
                                             std::to_string(link.GetNodeId()) +
                                             ", которого нет. Выберите другой узел или очистите "
                                             "свойство.");
        const auto &families = d.linkFamilies;
        const NodeType type = target->GetNodeType();
        const bool fits = families.empty() || std::find(families.begin(), families.end(),
                                                        type.GetFamily()) != families.end();
        if (!fits)
            add(Result::WrongType, "свойство «" + d.nameRu + "» ссылается на «" +
                                       target->GetPath() + "» (" + type.GetSubtypeNameTranslated() +
                                       "), такой узел здесь не подходит. Выберите другой.");
    }
    void checkResource(const PropertyDescriptor &d, const ResourceLink &resource)
    {
        if (resource.GetFilePath().empty() || resource.IsBuiltIn())
            return;
        const std::string path = resource.GetFullFilePath();
        std::error_code error;
        if (path.empty())
            add(Result::InvalidArgument, "файл «" + resource.GetFilePath() + "» свойства «" +
                                             d.nameRu +
                                             "» лежит вне каталога проекта, или туда ведёт "
                                             "символическая ссылка. Перенесите его в каталог "
                                             "проекта.");
        else if (!std::filesystem::is_regular_file(path, error))
            add(Result::NotFound, "нет файла «" + resource.GetFilePath() + "» свойства «" +
                                      d.nameRu + "». Добавьте файл или выберите другой.");
    }
    void checkKind(const ConfigNode &child)
    {
        const NodeType type = child.GetNodeType();
        if (type.GetSubtype() != NodeType::SubtypeUnknown && !m_node.GetKind()->AllowsChild(type))
            add(Result::InvalidArgument, "узел «" + child.GetName() + "» (" +
                                             type.GetSubtypeNameTranslated() +
                                             ") не может находиться здесь. Перенесите или удалите "
                                             "его.");
    }

    const ConfigNode &m_node;
    ValidationResults &m_results;
};

} // namespace

void ConfigNode::Validate(ValidationResults &results) const
{
    if (!GetKind())
        return;
    NodeCheck check(*this, results);
    check.Links();
    check.Cycles();
    check.Resources();
    check.Children();
    check.ForeignAttributes();
}

ValidationResults ConfigNode::isValid(const NodesArray *nodes) const
{
    ValidationResults results;
    Validate(results);
    if (!nodes)
        return results;
    for (const NodeLink &link : *nodes) {
        const ConfigNode *node = link.GetNode();
        if (node && node != this)
            node->Validate(results);
    }
    return results;
}

} // namespace Nodes
