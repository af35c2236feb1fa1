#include "nodes/project/signals/SheetImport.h"

#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr const char *nameTitle = "Имя";

bool isBlank(const std::vector<std::string> &row)
{
    return std::all_of(row.begin(), row.end(), [](const std::string &t) { return t.empty(); });
}

Result invalid(std::string reason)
{
    return Result(Result::InvalidArgument, std::move(reason));
}

} // namespace

SheetImport::SheetImport(ConfigNode &scope, unsigned family, const SheetColumns &columns,
                         std::vector<const KindInfo *> kinds)
    : m_scope(scope),
      m_family(family),
      m_columns(columns),
      m_kinds(std::move(kinds)),
      m_paths(scope.GetNodesCollection())
{
    for (const NodeLink &link : scope.GetNodes(true)) {
        ConfigNode *node = link.GetNode();
        const auto [place, isNew] = m_nodes.emplace(SheetColumns::PathFrom(scope, *node), node);
        if (!isNew)
            place->second = nullptr;
        const std::string brief = SheetColumns::ShortPathFrom(scope, *node);
        if (brief == place->first)
            continue;
        const auto [other, isOnly] = m_shortPaths.emplace(brief, node);
        if (!isOnly)
            other->second = nullptr;
    }
}

ConfigNode *SheetImport::find(const std::string &path) const
{
    if (const auto found = m_nodes.find(path); found != m_nodes.end())
        return found->second;
    const auto found = m_shortPaths.find(path);
    return found == m_shortPaths.end() ? nullptr : found->second;
}

Result SheetImport::PlanTable(const TextTable &table, SheetPlan &plan)
{
    const std::vector<int> places =
        table.empty() ? std::vector<int>() : readHeader(table.front(), plan);
    if (!namesRows(places))
        return invalid("в первой строке нет столбца «Имя»; первая строка таблицы должна называть "
                       "столбцы, как при экспорте");
    return PlanRows(table, 1, places, plan);
}

bool SheetImport::namesRows(const std::vector<int> &places) const
{
    return std::any_of(places.begin(), places.end(), [this](int place) {
        return place >= 0 && m_columns[std::size_t(place)].what == SheetColumn::Name;
    });
}

Result SheetImport::PlanRows(const TextTable &table, std::size_t first,
                             const std::vector<int> &places, SheetPlan &plan)
{
    if (!namesRows(places))
        return invalid("не указано, в каком столбце имя; выберите над ним «Имя»");
    for (auto place = places.begin(); place != places.end(); ++place) {
        if (*place >= 0 && std::find(std::next(place), places.end(), *place) != places.end())
            return invalid("столбец «" + m_columns[std::size_t(*place)].title +
                           "» выбран дважды; оставьте один");
    }
    plan.fates.assign(table.size(), SheetPlan::LeftOut);
    arrange(table, first, places, plan);
    for (std::size_t i = first; i < table.size(); ++i) {
        if (isBlank(table[i]))
            continue;
        plan.fates[i] = SheetPlan::Refused;
        planRow(table[i], i + 1, places, plan);
    }
    return Result();
}

std::vector<int> SheetImport::readHeader(const Row &header, SheetPlan &plan) const
{
    std::vector<int> places;
    for (const std::string &title : header) {
        const int place = m_columns.Guess(title);
        const bool isRepeated =
            place >= 0 && std::find(places.begin(), places.end(), place) != places.end();
        if (!title.empty() && (place < 0 || isRepeated))
            plan.Refuse(1, title, {},
                        isRepeated
                            ? "столбец назван второй раз; второй не читается, удалите лишний"
                            : "такого столбца нет, он не читается; куда он, можно сказать самому: "
                              "«Вставить как…», «Импорт…»");
        places.push_back(isRepeated ? -1 : place);
    }
    return places;
}

const KindInfo *SheetImport::kindOf(const Row &row, const std::vector<int> &places) const
{
    std::string name;
    for (std::size_t i = 0; i < std::min(row.size(), places.size()); ++i) {
        if (places[i] >= 0 && m_columns[std::size_t(places[i])].what == SheetColumn::Kind)
            name = FoldCase(row[i]);
    }
    if (name.empty())
        return m_kinds.empty() ? nullptr : m_kinds.front();
    for (const KindInfo &kind : KindTable::Instance().GetKinds()) {
        if (kind.type.GetFamily() == m_family &&
            (FoldCase(kind.nameRu) == name || FoldCase(kind.key) == name))
            return &kind;
    }
    return nullptr;
}

// Whatever became of the first: which of several rows counts must not depend on it.
bool SheetImport::isSaidAlready(const std::string &path, ConfigNode *node, std::size_t number,
                                SheetPlan &plan)
{
    const std::size_t first = std::min(m_named.emplace(path, number).first->second,
                                       node ? m_rows.emplace(node, number).first->second : number);
    if (first != number)
        plan.Refuse(number, nameTitle, path,
                    "имя уже есть в строке " + std::to_string(first) +
                        ", строка не взята; уберите повтор");
    return first != number;
}

void SheetImport::planRow(const Row &row, std::size_t number, const std::vector<int> &places,
                          SheetPlan &plan)
{
    std::string path;
    for (std::size_t i = 0; i < std::min(row.size(), places.size()); ++i) {
        if (places[i] >= 0 && m_columns[std::size_t(places[i])].what == SheetColumn::Name)
            path = row[i];
    }
    if (path.empty())
        return plan.Refuse(number, nameTitle, {},
                           "имя не указано, строка не взята; впишите имя или путь «Папка/Имя»");
    ConfigNode *node = find(path);
    if (!node && m_nodes.count(path) == 0 && m_shortPaths.count(path) != 0)
        return plan.Refuse(
            number, nameTitle, path,
            "так называются сигналы нескольких групп опроса, строка не взята; впишите "
            "путь вместе с группой");
    if (m_refusedRows.count(number) != 0) { // its name is said nevertheless
        m_named.emplace(path, number);
        return;
    }
    if (isSaidAlready(path, node, number, plan))
        return;
    if (node && node->GetNodeType().GetFamily() != m_family)
        return plan.Refuse(number, nameTitle, path,
                           "под этим именем стоит узел другого вида («" +
                               node->GetNodeType().GetSubtypeNameTranslated() +
                               "»), строка не взята; дайте другое имя");
    const bool isNew = node == nullptr;
    if (isNew) {
        const KindInfo *kind = kindOf(row, places);
        if (!kind)
            return plan.Refuse(number, "Вид", {},
                               "вид не распознан, строка не взята; возьмите вид из таблицы");
        const ModbusPlacing::Place *place = m_placing.Find(number);
        const Result made = PlanNode(place ? place->path : path, *kind, plan, node);
        if (!made)
            return plan.Refuse(number, nameTitle, path, made.GetDetail());
        if (place || m_offsets.count(number) != 0)
            (void)node->SetProperty(modbusSignal::Prop::Offset,
                                    place ? place->offset : m_offsets[number]);
        if (place)
            m_shortPaths[path] = node;
    }
    m_rows[node] = number;
    takeRow(*node, isNew, row, number, places, plan);
}

void SheetImport::PlanBlock(const TextTable &block, const NodeLinks &nodes,
                            const std::vector<int> &places, SheetPlan &plan)
{
    const bool hasNames = std::any_of(places.begin(), places.end(), [this](int place) {
        return m_columns[std::size_t(place)].what == SheetColumn::Name;
    });
    if (hasNames)
        arrange(block, nodes.size(), places, plan);
    for (std::size_t i = 0; i < block.size(); ++i) {
        ConfigNode *node = i < nodes.size() ? nodes[i].GetNode() : nullptr;
        if (node)
            takeRow(*node, false, block[i], i + 1, places, plan);
        else if (hasNames && !isBlank(block[i]))
            planRow(block[i], i + 1, places, plan);
        else if (!isBlank(block[i]))
            plan.Refuse(i + 1, {}, block[i].front(),
                        "строк больше, чем узлов под курсором; вставьте вместе со столбцом «Имя», "
                        "чтобы создать новые");
    }
}

} // namespace Nodes
