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

/// Path of a signal from `scope` without the polling groups that it passes; of other nodes the
/// path.
std::string shortPath(const ConfigNode &scope, const ConfigNode &node)
{
    if (!dynamic_cast<const modbusSignal *>(&node))
        return SheetColumns::PathFrom(scope, node);
    std::string path = node.GetName();
    for (const ConfigNode *parent = node.GetParent(); parent && parent != &scope;
         parent = parent->GetParent()) {
        if (!dynamic_cast<const modbusGroup *>(parent))
            path.insert(0, parent->GetName() + "/");
    }
    return path;
}

void refuse(SheetPlan &plan, std::size_t row, std::string column, std::string text,
            std::string reason)
{
    plan.refusals.push_back({row, std::move(column), std::move(text), std::move(reason)});
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
        const std::string brief = shortPath(scope, *node);
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
    if (std::none_of(places.begin(), places.end(), [this](int place) {
            return place >= 0 && m_columns[std::size_t(place)].what == SheetColumn::Name;
        }))
        return invalid("в первой строке нет столбца «Имя»; первая строка таблицы должна называть "
                       "столбцы, как при экспорте");
    arrange(table, 1, places, plan);
    for (std::size_t i = 1; i < table.size(); ++i) {
        if (!isBlank(table[i]) && m_refusedRows.count(i + 1) == 0)
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
            refuse(plan, 1, title, {},
                   isRepeated ? "столбец назван второй раз; второй не читается, удалите лишний"
                              : "такого столбца нет, он не читается; названия столбцов — как в "
                                "заголовке таблицы");
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

void SheetImport::planRow(const Row &row, std::size_t number, const std::vector<int> &places,
                          SheetPlan &plan)
{
    std::string path;
    for (std::size_t i = 0; i < std::min(row.size(), places.size()); ++i) {
        if (places[i] >= 0 && m_columns[std::size_t(places[i])].what == SheetColumn::Name)
            path = row[i];
    }
    if (path.empty())
        return refuse(plan, number, nameTitle, {},
                      "имя не указано, строка не взята; впишите имя или путь «Папка/Имя»");
    ConfigNode *node = find(path);
    if (!node && m_nodes.count(path) == 0 && m_shortPaths.count(path) != 0)
        return refuse(plan, number, nameTitle, path,
                      "так называются сигналы нескольких групп опроса, строка не взята; впишите "
                      "путь вместе с группой");
    // Whatever became of the first: which of several rows counts must not depend on it.
    const std::size_t first = std::min(m_named.emplace(path, number).first->second,
                                       node ? m_rows.emplace(node, number).first->second : number);
    if (first != number)
        return refuse(plan, number, nameTitle, path,
                      "имя уже есть в строке " + std::to_string(first) +
                          ", строка не взята; уберите повтор");
    if (node && node->GetNodeType().GetFamily() != m_family)
        return refuse(plan, number, nameTitle, path,
                      "под этим именем стоит узел другого вида («" +
                          node->GetNodeType().GetSubtypeNameTranslated() +
                          "»), строка не взята; дайте другое имя");
    const bool isNew = node == nullptr;
    if (isNew) {
        const KindInfo *kind = kindOf(row, places);
        if (!kind)
            return refuse(plan, number, "Вид", {},
                          "вид не распознан, строка не взята; возьмите вид из таблицы");
        const ModbusPlacing::Place *place = m_placing.Find(number);
        const Result made = PlanNode(place ? place->path : path, *kind, plan, node);
        if (!made)
            return refuse(plan, number, nameTitle, path, made.GetDetail());
        if (place || m_offsets.count(number) != 0)
            (void)node->SetProperty(modbusSignal::Prop::Offset,
                                    place ? place->offset : m_offsets[number]);
        if (place)
            m_shortPaths[path] = node;
    }
    m_rows[node] = number;
    takeRow(*node, isNew, row, number, places, plan);
}

void SheetImport::takeRow(ConfigNode &node, bool isNew, const Row &row, std::size_t number,
                          const std::vector<int> &places, SheetPlan &plan)
{
    const auto count = [&plan] {
        return plan.changes.size() + plan.names.size() + plan.descriptions.size() +
               plan.removals.size() + plan.additions.size();
    };
    const std::size_t before = count();
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i >= places.size()) {
            if (!row[i].empty())
                refuse(plan, number, {}, row[i], "ячейка за последним столбцом; уберите её");
        } else if (const Cell cell{number, m_columns[std::size_t(std::max(places[i], 0))], row[i]};
                   places[i] >= 0 && !(isNew && isPlaced(cell))) {
            takeCell(node, isNew, cell, plan);
        }
    }
    if (!isNew && count() != before)
        ++plan.updated;
}

void SheetImport::takeCell(ConfigNode &node, bool isNew, const Cell &cell, SheetPlan &plan)
{
    switch (cell.column.what) {
    case SheetColumn::Kind: {
        const KindInfo *own = node.GetKind();
        if (own && !cell.text.empty() && FoldCase(cell.text) != FoldCase(own->nameRu) &&
            FoldCase(cell.text) != FoldCase(own->key))
            refuse(plan, cell.row, cell.column.title, cell.text,
                   "вид узла не меняется; удалите узел и создайте заново");
        break;
    }
    case SheetColumn::Description:
        if (node.GetDescription() == cell.text)
            break;
        if (isNew)
            node.SetDescription(cell.text);
        else
            plan.descriptions.push_back({node.GetNodeLink(), cell.text});
        break;
    case SheetColumn::Property:
        takeProperty(node, isNew, cell, plan);
        break;
    case SheetColumn::Name:
        if (!isNew)
            takeName(node, cell, plan);
        break;
    case SheetColumn::Setting:
        takeSetting(node, cell, plan);
        break;
    }
}

void SheetImport::takeSetting(ConfigNode &node, const Cell &cell, SheetPlan &plan)
{
    const Result planned = m_settings.Plan(cell.column, node, cell.text, plan);
    if (!planned)
        refuse(plan, cell.row, cell.column.title, cell.text, planned.GetDetail());
}

void SheetImport::takeName(ConfigNode &node, const Cell &cell, SheetPlan &plan)
{
    const std::string path = SheetColumns::PathFrom(m_scope, node);
    const std::size_t length = path.size() - node.GetName().size();
    if (cell.text == path || cell.text == shortPath(m_scope, node))
        return;
    const std::string name = cell.text.substr(std::min(length, cell.text.size()));
    if (cell.text.compare(0, length, path, 0, length) != 0 || name.empty() ||
        name.find('/') != std::string::npos)
        return refuse(plan, cell.row, cell.column.title, cell.text,
                      "так узел попал бы в другое место; перенесите его в дереве проекта");
    if (!m_nodes.emplace(cell.text, &node).second)
        return refuse(plan, cell.row, cell.column.title, cell.text, "имя уже занято; дайте другое");
    plan.names.push_back({node.GetNodeLink(), name});
}

void SheetImport::takeProperty(ConfigNode &node, bool isNew, const Cell &cell,
                               SheetPlan &plan) const
{
    const PropertyDescriptor *own = SheetColumns::DescriptorFor(cell.column, node);
    if (!own) {
        if (!cell.text.empty())
            refuse(plan, cell.row, cell.column.title, cell.text,
                   "у вида «" + node.GetKind()->nameRu +
                       "» нет этого свойства; оставьте ячейку пустой");
        return;
    }
    const bool mayBeEmpty = own->binding.type == PropertyType::String ||
                            own->binding.type == PropertyType::Link ||
                            own->binding.type == PropertyType::Links;
    if ((cell.text.empty() && (isNew || !mayBeEmpty)) || CellText::Show(*own, node) == cell.text)
        return;
    boost::any value;
    Result read = CellText::Read(*own, cell.text, m_paths, value);
    if (read && CellText::Holds(*own, node, value))
        return; // written otherwise
    if (read && isNew) {
        read = node.SetProperty(own->valueId, value);
    } else if (read) {
        plan.changes.push_back({node.GetNodeLink(), own->valueId, std::move(value)});
    }
    if (!read)
        refuse(plan, cell.row, cell.column.title, cell.text, read.GetDetail());
}

void SheetImport::PlanBlock(const TextTable &block, const NodeLinks &nodes, std::size_t first,
                            SheetPlan &plan)
{
    std::size_t width = 0;
    for (const Row &row : block)
        width = std::max(width, row.size());
    std::vector<int> places;
    for (std::size_t i = 0; i < width && first + i < m_columns.GetCount(); ++i)
        places.push_back(int(first + i));
    const bool hasNames = std::any_of(places.begin(), places.end(), [this](int place) {
        return m_columns[std::size_t(place)].what == SheetColumn::Name;
    });
    if (hasNames)
        arrange(block, nodes.size(), places, plan);
    for (std::size_t i = 0; i < block.size(); ++i) {
        ConfigNode *node = i < nodes.size() ? nodes[i].GetNode() : nullptr;
        if (node)
            takeRow(*node, false, block[i], i + 1, places, plan);
        else if (m_refusedRows.count(i + 1) != 0)
            continue;
        else if (hasNames && !isBlank(block[i]))
            planRow(block[i], i + 1, places, plan);
        else if (!isBlank(block[i]))
            refuse(plan, i + 1, {}, block[i].front(),
                   "строк больше, чем узлов под курсором; вставьте вместе со столбцом «Имя», "
                   "чтобы создать новые");
    }
}

} // namespace Nodes
