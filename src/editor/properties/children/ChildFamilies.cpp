#include "editor/properties/children/ChildFamilies.h"

#include "nodes/model/KindTable.h"

#include <algorithm>
#include <utility>

namespace Editor {

namespace {

using Nodes::NodeType;

struct Title
{
    NodeType::enNodeType family;
    const char *russian;
};

// A family that is not here is no list: its nodes are found in the tree of the project.
constexpr Title titles[] = {
    {NodeType::TypeAlarm, "Тревоги"},           {NodeType::TypeState, "Строки списка"},
    {NodeType::TypeMenu, "Пункты меню"},        {NodeType::TypeChartItem, "Группы и линии"},
    {NodeType::TypeReportItem, "Части отчёта"}, {NodeType::TypeArgument, "Аргументы"},
    {NodeType::TypeChartAxis, "Оси"},           {NodeType::TypeSecurity, "Правила доступа"}};

// A kind that some parent asks for by its code is made for that one; others that take its whole
// family mean the rest of it.
bool isMadeFor(const Nodes::KindInfo &parent, const Nodes::KindInfo &child)
{
    const auto names = [&](const Nodes::KindInfo &kind) {
        return std::find(kind.children.begin(), kind.children.end(), child.type) !=
               kind.children.end();
    };
    const auto &kinds = Nodes::KindTable::Instance().GetKinds();
    return names(parent) || std::none_of(kinds.begin(), kinds.end(), names);
}

bool isHolder(const Nodes::KindInfo &kind)
{
    const NodeType::enNodeType family = kind.type.GetFamily();
    return family == NodeType::TypeSystem || family == NodeType::TypeFolder ||
           family == NodeType::TypeSubsystem || family == NodeType::TypeDriver ||
           family == NodeType::TypeDriverGroup;
}

// What stands in a list of one kind is called by it; the family has no word for these.
constexpr std::pair<const char *, const char *> kindTitles[] = {{"state", "Состояния"},
                                                                {"comboItem", "Варианты"},
                                                                {"recorderChannel", "Каналы"},
                                                                {"eventColumn", "Столбцы"}};

QString titleOf(const ChildFamily &family, const char *russian)
{
    for (const auto &[key, title] : kindTitles) {
        if (family.kinds.size() == 1 && family.kinds.front()->key == key)
            return QString::fromUtf8(title);
    }
    return QString::fromUtf8(russian);
}

} // namespace

std::vector<ChildFamily> childFamilies(const Nodes::KindInfo &kind)
{
    std::vector<ChildFamily> families;
    if (isHolder(kind))
        return families;
    for (const Nodes::KindInfo &child : Nodes::KindTable::Instance().GetKinds()) {
        const NodeType::enNodeType family = child.type.GetFamily();
        const auto *title = std::find_if(std::begin(titles), std::end(titles),
                                         [&](const Title &t) { return t.family == family; });
        if (title == std::end(titles) || !kind.AllowsChild(child.type) || !isMadeFor(kind, child))
            continue;
        auto place = std::find_if(families.begin(), families.end(),
                                  [&](const ChildFamily &known) { return known.family == family; });
        if (place == families.end())
            place = families.insert(place, {family, {}});
        place->kinds.push_back(&child);
        place->title = titleOf(*place, title->russian);
    }
    return families;
}

} // namespace Editor
