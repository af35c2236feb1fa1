#include "editor/signals/SheetEdits.h"

#include "editor/signals/SheetCommand.h"
#include "editor/signals/SheetModel.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/project/signals/SheetImport.h"
#include "nodes/values/NumberText.h"

#include <QCoreApplication>

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

namespace Editor::SheetEdits {

using Nodes::SheetColumn;
using Nodes::SheetImport;
using Nodes::SheetPlan;
using Nodes::TextTable;

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Editor::SheetEdits", text);
}

SheetImport importOf(const SheetModel &model)
{
    return SheetImport(*model.scope(), model.family(), model.columns(), model.kinds());
}

Columns allColumns(const SheetModel &model)
{
    Columns order(std::size_t(model.columnCount()));
    std::iota(order.begin(), order.end(), 0);
    return order;
}

/// A row by itself is no header: it would say nothing.
bool hasHeader(const SheetModel &model, const TextTable &table)
{
    return table.size() > 1 && model.columns().IsHeader(table[0]);
}

/// Spreadsheets put tabs between cells; text of a file that was copied as a whole has its own
/// separator, and its header tells.
Nodes::Result readClipboard(const SheetModel &model, const std::string &text, TextTable &table)
{
    const char separator = Nodes::DelimitedText::RecogniseSeparator(text);
    const Nodes::Result read = Nodes::DelimitedText::Read(text, separator, table);
    if (!read || separator == '\t' || hasHeader(model, table))
        return read;
    return Nodes::DelimitedText::Read(text, '\t', table);
}

void planSame(const SheetModel &model, const Cells &cells, const std::string &text,
              SheetImport &import, SheetPlan &plan)
{
    for (const auto &[row, column] : cells)
        import.PlanBlock({{ text }}, {model.node(row)}, {column}, plan);
}

} // namespace

bool carryOut(Workspace &workspace, SheetPlan &plan, const QString &text)
{
    QUndoCommand *command = makeSheetCommand(plan, text);
    if (!command) {
        workspace.tell(Workspace::Info, tr("Менять нечего: в таблице уже всё так."));
        return false;
    }
    if (!workspace.push(command)) {
        plan.Discard();
        return false;
    }
    workspace.tell(Workspace::Info, tr("Создано: %1, изменено: %2. Отменить — Ctrl+Z.")
                                        .arg(plan.added)
                                        .arg(std::max(plan.updated, plan.names.size())));
    return true;
}

Refusals importTable(Workspace &workspace, const SheetModel &model, const TextTable &table)
{
    SheetPlan plan;
    const Nodes::Result planned = importOf(model).PlanTable(table, plan);
    if (!planned)
        plan.refusals.push_back({0, {}, {}, planned.GetDetail()});
    else
        carryOut(workspace, plan, tr("Вставка таблицы"));
    return std::move(plan.refusals);
}

Refusals paste(Workspace &workspace, const SheetModel &model, const std::string &text, int row,
               int column, const Cells &selected, Columns order)
{
    if (order.empty())
        order = allColumns(model);
    TextTable table;
    const Nodes::Result read = readClipboard(model, text, table);
    if (!read)
        return {{0, {}, {}, read.GetDetail()}};
    if (hasHeader(model, table))
        return importTable(workspace, model, table);
    SheetPlan plan;
    SheetImport import = importOf(model);
    if (table.size() == 1 && table[0].size() == 1 && selected.size() > 1) {
        planSame(model, selected, table[0][0], import, plan);
    } else {
        Nodes::NodeLinks nodes;
        for (int i = std::max(row, 0); i < model.rowCount(); ++i)
            nodes.push_back(model.node(i));
        const auto first = std::find(order.begin(), order.end(), column);
        import.PlanBlock(table, nodes, {first == order.end() ? order.begin() : first, order.end()},
                         plan);
    }
    carryOut(workspace, plan, tr("Вставка в таблицу"));
    return std::move(plan.refusals);
}

Refusals fillDown(Workspace &workspace, const SheetModel &model, const Cells &selected)
{
    std::map<int, std::set<int>> columns; // rows of each
    for (const auto &[row, column] : selected)
        columns[column].insert(row);
    SheetPlan plan;
    SheetImport import = importOf(model);
    for (const auto &[column, rows] : columns) {
        if (model.columns()[std::size_t(column)].what == SheetColumn::Name)
            continue; // names differ
        Cells below;
        for (auto row = std::next(rows.begin()); row != rows.end(); ++row)
            below.emplace_back(*row, column);
        planSame(model, below, model.text(*rows.begin(), column).toStdString(), import, plan);
    }
    carryOut(workspace, plan, tr("Заполнение вниз"));
    return std::move(plan.refusals);
}

Refusals addNodes(Workspace &workspace, const SheetModel &model,
                  const std::vector<std::string> &names, const Nodes::KindInfo &kind, int column,
                  double first, double step)
{
    SheetPlan plan;
    SheetImport import = importOf(model);
    TextTable table{{"Имя", "Вид"}};
    if (column >= 0)
        table[0].push_back(model.columns()[std::size_t(column)].title);
    for (const std::string &name : names) {
        table.push_back({name, kind.nameRu});
        if (column >= 0)
            table.back().push_back(Nodes::FormatDouble(first + step * double(table.size() - 2)));
    }
    const Nodes::ConfigNode *scope = model.scope();
    std::set<std::string> taken;
    for (const Nodes::NodeLink &node : model.shown())
        taken.insert(Nodes::SheetColumns::PathFrom(*scope, *node.GetNode()));
    // What is there already is not to be changed by adding.
    for (std::size_t i = table.size(); i-- > 1;) {
        if (taken.count(table[i][0]) == 0)
            continue;
        plan.refusals.push_back({i, "Имя", table[i][0], "такой узел уже есть, не изменён"});
        table.erase(table.begin() + long(i));
    }
    std::reverse(plan.refusals.begin(), plan.refusals.end());
    (void)import.PlanTable(table, plan);
    carryOut(workspace, plan, tr("Добавление по образцу"));
    return std::move(plan.refusals);
}

Refusals setAlarms(Workspace &workspace, Nodes::ConfigNode &scope, const TextTable &table)
{
    const std::vector<const Nodes::KindInfo *> kinds{
        Nodes::KindTable::Instance().FindByKey("alarmLimit")};
    const Nodes::SheetColumns columns(kinds);
    SheetPlan plan;
    (void)SheetImport(scope, Nodes::NodeType::TypeAlarm, columns, kinds).PlanTable(table, plan);
    carryOut(workspace, plan, tr("Тревоги по пределам"));
    return std::move(plan.refusals);
}

Refusals rename(Workspace &workspace, const Nodes::NodeLinks &nodes,
                const std::vector<std::string> &names)
{
    // In two rounds, so that names can pass from one node to another.
    SheetPlan plan;
    std::vector<SheetPlan::Text> wanted;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const Nodes::ConfigNode *node = nodes[i].GetNode();
        if (!node || node->GetName() == names[i])
            continue;
        const bool isFit = !names[i].empty() && names[i].find('/') == std::string::npos;
        if (!isFit)
            plan.refusals.push_back({i + 1, "Имя", names[i], "имя пустое или содержит «/»"});
        else
            wanted.push_back({nodes[i], names[i]});
    }
    std::set<std::pair<const Nodes::ConfigNode *, std::string>> taken;
    std::set<unsigned long> leaving;
    for (const auto &text : wanted)
        leaving.insert(text.node.GetNodeId());
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const Nodes::ConfigNode *parent = wanted[i].node->GetParent();
        const Nodes::ConfigNode *other = parent ? parent->GetSubObject(wanted[i].text) : nullptr;
        const bool isFree = !other || leaving.count(other->GetId()) != 0;
        if (isFree && taken.emplace(parent, wanted[i].text).second) {
            plan.names.push_back({wanted[i].node, "\x01" + std::to_string(i)});
            continue;
        }
        plan.refusals.push_back({i + 1, "Имя", wanted[i].text, "имя уже занято; дайте другое"});
        wanted[i].node = {};
    }
    for (const auto &text : wanted) {
        if (!text.node.isEmpty())
            plan.names.push_back(text);
    }
    plan.updated = plan.names.size() / 2;
    if (plan.refusals.empty()) // all or nothing: a name that stays may be in the way of another
        carryOut(workspace, plan, tr("Переименование по образцу"));
    return std::move(plan.refusals);
}

std::string copy(const SheetModel &model, const Cells &selected, Columns order)
{
    if (order.empty())
        order = allColumns(model);
    Cells places; // as they are seen
    for (const auto &[row, column] : selected) {
        const auto found = std::find(order.begin(), order.end(), column);
        if (found != order.end())
            places.emplace_back(row, int(found - order.begin()));
    }
    if (places.empty())
        return {};
    const auto [top, bottom] = std::minmax_element(places.begin(), places.end());
    const auto byColumn = [](const auto &one, const auto &other) {
        return one.second < other.second;
    };
    const auto [left, right] = std::minmax_element(places.begin(), places.end(), byColumn);
    TextTable table(std::size_t(bottom->first - top->first + 1),
                    std::vector<std::string>(std::size_t(right->second - left->second + 1)));
    for (const auto &[row, place] : places)
        table[std::size_t(row - top->first)][std::size_t(place - left->second)] =
            model.text(row, order[std::size_t(place)]).toStdString();
    return Nodes::DelimitedText::Write(table, '\t', "\n");
}

TextTable exportTable(const SheetModel &model)
{
    TextTable table(1);
    for (int column = 0; column < model.columnCount(); ++column)
        table[0].push_back(model.columns()[std::size_t(column)].title);
    for (int row = 0; row < model.rowCount(); ++row) {
        table.emplace_back();
        for (int column = 0; column < model.columnCount(); ++column)
            table.back().push_back(model.text(row, column).toStdString());
    }
    return table;
}

} // namespace Editor::SheetEdits
