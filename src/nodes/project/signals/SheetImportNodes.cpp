// New nodes of a table, with the folders on the way to them.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/signals/SheetImport.h"

namespace Nodes {

namespace {

Result invalid(std::string reason)
{
    return Result(Result::InvalidArgument, std::move(reason));
}

} // namespace

Result SheetImport::addClone(const KindInfo &kind, const std::string &path, ConfigNode &parent,
                             SheetPlan &plan, ConfigNode *&made)
{
    NodesCollection &project = *m_scope.GetNodesCollection();
    std::unique_ptr<ConfigNode> node = project.CreateDetached(kind);
    node->SetName(path.substr(path.rfind('/') + 1));
    made = node.get();
    Result result;
    if (m_isClone.count(&parent) != 0) {
        result = parent.AddNode(node);
    } else {
        result = project.HoldClone(node, false);
        if (result)
            plan.additions.push_back({made->GetNodeLink(), parent.GetNodeLink()});
    }
    if (!result) {
        made = nullptr;
        return invalid("узел не создан: " + result.GetResultTranslated());
    }
    m_isClone[made] = true;
    m_nodes[path] = made;
    return result;
}

Result SheetImport::findPlace(const std::string &path, ConfigNode *&parent, SheetPlan &plan)
{
    const std::size_t slash = path.rfind('/');
    parent = &m_scope;
    if (slash == std::string::npos)
        return Result();
    const std::string above = path.substr(0, slash);
    parent = find(above);
    if (parent)
        return Result();
    ConfigNode *outer = nullptr;
    const Result found = findPlace(above, outer, plan);
    const KindInfo *folder = KindTable::Instance().Find(NodeType(NodeType::SubtypeFolder));
    if (!found)
        return found;
    if (above.substr(above.rfind('/') + 1).empty())
        return invalid("в пути есть пустое имя; уберите лишнюю «/»");
    if (!folder || !outer->GetKind() || !outer->GetKind()->AllowsChild(folder->type))
        return invalid("нет узла «" + above + "», и в «" + outer->GetName() +
                       "» нельзя создать папку; исправьте путь");
    return addClone(*folder, above, *outer, plan, parent);
}

Result SheetImport::PlanNode(const std::string &path, const KindInfo &kind, SheetPlan &plan,
                             ConfigNode *&made)
{
    made = nullptr;
    if (m_nodes.count(path) != 0)
        return Result(Result::Duplicate, "имя «" + path + "» уже занято; дайте другое");
    if (path.empty() || path.back() == '/')
        return invalid("имя пустое; впишите имя");
    ConfigNode *parent = nullptr;
    const Result found = findPlace(path, parent, plan);
    if (!found)
        return found;
    if (parent->GetKind() && !parent->GetKind()->AllowsChild(kind.type))
        return invalid("«" + kind.nameRu + "» не может стоять в «" + parent->GetName() +
                       "»; укажите другое место");
    const Result added = addClone(kind, path, *parent, plan, made);
    plan.added += added ? 1 : 0;
    return added;
}

} // namespace Nodes
