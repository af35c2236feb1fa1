#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkCycles.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/serial/PropertyHelp.h"

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
                add(Result(&m_node, Result::Cycle, cycle.property->key), FindingCode::LinkCycle,
                    "свойство «" + cycle.property->nameRu + "» узла «" + cycle.node->GetPath() +
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
    void Texts()
    {
        for (const PropertyDescriptor &d : m_node.GetKind()->properties) {
            if (!d.editorHint.empty() && d.binding.type == PropertyType::String)
                checkText(d, *static_cast<const std::string *>(d.binding.data(m_node)));
        }
    }
    void Children()
    {
        std::unordered_set<std::string_view> names;
        for (const auto &child : m_node.Children()) {
            checkKind(*child);
            if (!child->GetName().empty() && !names.insert(child->GetName()).second)
                add(Result(&m_node, Result::Duplicate), FindingCode::RepeatedName,
                    "несколько вложенных узлов называются «" + child->GetName() +
                        "». Дайте им разные имена.");
        }
    }
    void ForeignAttributes()
    {
        for (const auto &[key, value] : m_node.GetForeignAttributes()) {
            if (key.front() != '#')
                checkForeign(key, value);
        }
    }

private:
    void add(Result result, const char *code, const std::string &text)
    {
        m_results.Add(
            m_node.GetNodeLink(), std::move(result),
            (m_node.GetPath().empty() ? m_node.GetName() : m_node.GetPath()) + ": " + text, code);
    }
    // The text of a property that did not read is kept under its key until it is set.
    void checkForeign(const std::string &key, const std::string &value)
    {
        const std::string what = "атрибут «" + key + "» со значением «" + value + "» не действует";
        const PropertyDescriptor *d = m_node.GetKind()->FindProperty(std::string_view(key));
        add(Result(&m_node, Result::InvalidArgument, key),
            d ? FindingCode::BadValue : FindingCode::UnknownAttribute,
            d ? what + ": ожидается " + DescribeExpected(*d) + ". Задайте свойство «" + d->nameRu +
                    "» заново."
              : what + ". Исправьте или удалите его.");
    }
    void checkLink(const PropertyDescriptor &d, const NodeLink &link)
    {
        const ConfigNode *target = link.GetNode();
        if (!target)
            return add(Result(&m_node, Result::NotFound, d.key), FindingCode::NoTarget,
                       "свойство «" + d.nameRu + "» ссылается на узел " +
                           std::to_string(link.GetNodeId()) +
                           ", которого нет. Выберите другой узел или очистите "
                           "свойство.");
        const auto &families = d.linkFamilies;
        const NodeType type = target->GetNodeType();
        const bool fits = families.empty() || std::find(families.begin(), families.end(),
                                                        type.GetFamily()) != families.end();
        if (!fits)
            add(Result(&m_node, Result::WrongType, d.key), FindingCode::WrongTarget,
                "свойство «" + d.nameRu + "» ссылается на «" + target->GetPath() + "» (" +
                    type.GetSubtypeNameTranslated() +
                    "), такой узел здесь не подходит. Выберите другой.");
    }
    void checkResource(const PropertyDescriptor &d, const ResourceLink &resource)
    {
        if (resource.GetFilePath().empty() || resource.IsBuiltIn())
            return;
        const std::string path = resource.GetFullFilePath();
        std::error_code error;
        if (path.empty())
            add(Result(&m_node, Result::InvalidArgument, d.key), FindingCode::ForeignFile,
                "файл «" + resource.GetFilePath() + "» свойства «" + d.nameRu +
                    "» лежит вне каталога проекта, или туда ведёт "
                    "символическая ссылка. Перенесите его в каталог "
                    "проекта.");
        else if (!std::filesystem::is_regular_file(path, error))
            add(Result(&m_node, Result::NotFound, d.key), FindingCode::NoFile,
                "нет файла «" + resource.GetFilePath() + "» свойства «" + d.nameRu +
                    "». Добавьте файл или выберите другой.");
    }
    // The first one only: what follows is often a consequence of it.
    void checkText(const PropertyDescriptor &d, const std::string &text)
    {
        const KindTable::TextCheck check = KindTable::Instance().GetTextCheck();
        const std::vector<TextProblem> problems =
            check ? check(d.editorHint, text, &m_node) : std::vector<TextProblem>();
        if (problems.empty())
            return;
        const TextProblem &problem = problems.front();
        const auto line = 1 + std::count(text.begin(), text.begin() + long(problem.begin), '\n');
        const std::string where =
            text.find('\n') == std::string::npos ? "" : ", строка " + std::to_string(line);
        add(Result(&m_node, problem.isRemark ? Result::Success : Result::InvalidArgument, d.key),
            problem.isRemark ? FindingCode::Advice : FindingCode::BadText,
            "свойство «" + d.nameRu + "»" + where + ": " + problem.message + ".");
    }
    void checkKind(const ConfigNode &child)
    {
        const NodeType type = child.GetNodeType();
        if (type.GetSubtype() != NodeType::SubtypeUnknown && !m_node.GetKind()->AllowsChild(type))
            add(Result(&m_node, Result::InvalidArgument), FindingCode::Misplaced,
                "узел «" + child.GetName() + "» (" + type.GetSubtypeNameTranslated() +
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
    check.Texts();
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
