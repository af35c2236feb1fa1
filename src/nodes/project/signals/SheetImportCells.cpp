// What the cells of a row say of its node.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/SheetImport.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>

namespace Nodes {

namespace {

std::size_t changesOf(const SheetPlan &plan)
{
    return plan.changes.size() + plan.names.size() + plan.descriptions.size() +
           plan.removals.size() + plan.additions.size();
}

} // namespace

void SheetImport::takeRow(ConfigNode &node, bool isNew, const Row &row, std::size_t number,
                          const std::vector<int> &places, SheetPlan &plan)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (i >= places.size() && !row[i].empty())
            plan.Refuse(number, {}, row[i], "ячейка за последним столбцом; уберите её");
        if (i >= places.size() || places[i] < 0)
            continue;
        const Cell cell{number, m_columns[std::size_t(places[i])], row[i]};
        if (isNew && isPlaced(cell))
            continue;
        const std::size_t sofar = changesOf(plan);
        // Properties stay as they are until the plan is carried out, settings are noted at once.
        const bool isSetting = cell.column.what == SheetColumn::Setting;
        const std::string setting = isSetting ? m_settings.GetText(cell.column, node) : "";
        takeCell(node, isNew, cell, plan);
        const bool isTaken =
            isSetting ? m_settings.GetText(cell.column, node) != setting || changesOf(plan) != sofar
                      : changesOf(plan) != sofar;
        if (!isNew && isTaken)
            plan.marks.push_back(
                {number, i,
                 isSetting ? setting : SheetColumns::GetText(cell.column, node, m_scope)});
    }
    const bool isChanged = !plan.marks.empty() && plan.marks.back().row == number;
    plan.updated += isChanged;
    if (number <= plan.fates.size())
        plan.fates[number - 1] = isNew       ? SheetPlan::Added
                                 : isChanged ? SheetPlan::Changed
                                             : SheetPlan::Same;
}

void SheetImport::takeCell(ConfigNode &node, bool isNew, const Cell &cell, SheetPlan &plan)
{
    switch (cell.column.what) {
    case SheetColumn::Kind: {
        const KindInfo *own = node.GetKind();
        if (own && !cell.text.empty() && FoldCase(cell.text) != FoldCase(own->nameRu) &&
            FoldCase(cell.text) != FoldCase(own->key))
            plan.Refuse(cell.row, cell.column.title, cell.text,
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
        plan.Refuse(cell.row, cell.column.title, cell.text, planned.GetDetail());
}

void SheetImport::takeName(ConfigNode &node, const Cell &cell, SheetPlan &plan)
{
    const std::string path = SheetColumns::PathFrom(m_scope, node);
    const std::size_t length = path.size() - node.GetName().size();
    if (cell.text == path || cell.text == SheetColumns::ShortPathFrom(m_scope, node))
        return;
    const std::string name = cell.text.substr(std::min(length, cell.text.size()));
    if (cell.text.compare(0, length, path, 0, length) != 0 || name.empty() ||
        name.find('/') != std::string::npos)
        return plan.Refuse(cell.row, cell.column.title, cell.text,
                           "так узел попал бы в другое место; перенесите его в дереве проекта");
    if (!m_nodes.emplace(cell.text, &node).second)
        return plan.Refuse(cell.row, cell.column.title, cell.text, "имя уже занято; дайте другое");
    plan.names.push_back({node.GetNodeLink(), name});
}

void SheetImport::takeProperty(ConfigNode &node, bool isNew, const Cell &cell,
                               SheetPlan &plan) const
{
    const PropertyDescriptor *own = SheetColumns::DescriptorFor(cell.column, node);
    if (!own) {
        if (!cell.text.empty())
            plan.Refuse(cell.row, cell.column.title, cell.text,
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
        plan.Refuse(cell.row, cell.column.title, cell.text, read.GetDetail());
}

} // namespace Nodes
