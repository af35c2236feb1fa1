#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/KindTable.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/project/signals/SheetImport.h"

namespace Nodes {

namespace {

constexpr const char *addressColumn = "Адрес";
constexpr const char *tableColumn = "Таблица";
constexpr int lastAddress = 65535;

template <class Node> const Node *above(const ConfigNode *node)
{
    while (node && !dynamic_cast<const Node *>(node))
        node = node->GetParent();
    return dynamic_cast<const Node *>(node);
}

Result readNumber(const PropertyDescriptor &like, const std::string &text, const NodePaths &paths,
                  int &number)
{
    boost::any value;
    const Result read = CellText::Read(like, text, paths, value);
    if (read)
        number = boost::any_cast<int>(value);
    return read;
}

} // namespace

const std::string &SheetImport::cellOf(const Row &row, const std::vector<int> &places,
                                       std::string_view column) const
{
    static const std::string none;
    const int wanted = m_columns.Find(column);
    for (std::size_t i = 0; wanted >= 0 && i < std::min(row.size(), places.size()); ++i) {
        if (places[i] == wanted)
            return row[i];
    }
    return none;
}

ConfigNode *SheetImport::nearest(const std::string &folder) const
{
    for (std::string path = folder; !path.empty();) {
        if (ConfigNode *node = find(path))
            return node;
        const std::size_t slash = path.rfind('/');
        path = slash == std::string::npos ? std::string() : path.substr(0, slash);
    }
    return &m_scope;
}

bool SheetImport::isPlaced(const Cell &cell) const
{
    const bool isPlace = SheetSettings::IsAddress(cell.column) ||
                         SheetSettings::IsTable(cell.column) ||
                         (cell.column.descriptor &&
                          cell.column.descriptor->valueId == modbusSignal::Prop::Offset.valueId);
    return isPlace && (m_placing.Find(cell.row) || m_offsets.count(cell.row) != 0);
}

Result SheetImport::readPoint(const Row &row, const std::vector<int> &places,
                              const modbusGroup *group, ModbusTable &table, int &address,
                              int &width) const
{
    const KindInfo &kind = *KindTable::Instance().Find(NodeType(modbusSignal::Code));
    const KindInfo &groups = *KindTable::Instance().Find(NodeType(modbusGroup::Code));
    const std::string &written = cellOf(row, places, addressColumn);
    if (group)
        return SheetSettings::ReadAddress(written, *group, address);
    Result read;
    int code = int(ModbusTable::Holding);
    if (const std::string &text = cellOf(row, places, tableColumn); !text.empty())
        read =
            readNumber(*groups.FindProperty(modbusGroup::Prop::Table.valueId), text, m_paths, code);
    table = ModbusTable(code);
    if (read && !written.empty())
        read = readNumber(*groups.FindProperty(modbusGroup::Prop::Start.valueId), written, m_paths,
                          address);
    else if (read)
        read = readNumber(*kind.FindProperty(modbusSignal::Prop::Offset.valueId),
                          cellOf(row, places, modbusSignal::Prop::Offset.key), m_paths, address);
    ModbusPoint point;
    if (const std::string &text = cellOf(row, places, modbusSignal::Prop::DataType.key);
        read && !text.empty()) {
        read = readNumber(*kind.FindProperty(modbusSignal::Prop::DataType.valueId), text, m_paths,
                          code);
        point.type = ModbusType(code);
    }
    width = point.GetWidth();
    if (read && address + width - 1 > lastAddress)
        return Result(Result::InvalidArgument, "адрес больше 65535");
    return read;
}

void SheetImport::arrangeRow(const Row &row, std::size_t number, const std::vector<int> &places,
                             SheetPlan &plan)
{
    const std::string &path = cellOf(row, places, "Имя");
    if (path.empty() || !m_arranged.insert(path).second)
        return; // of several rows the first counts, whatever it makes
    const KindInfo *kind = kindOf(row, places);
    const bool isNew = path.back() != '/' && !isKnown(path);
    if (!isNew || !kind || kind->type != NodeType(modbusSignal::Code))
        return;
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
    const ConfigNode *place = nearest(folder);
    const auto *group = above<modbusGroup>(place);
    const std::string &address = cellOf(row, places, addressColumn);
    const bool isSaid = !address.empty() || (!group && !cellOf(row, places, "offset").empty());
    if (!isSaid || !above<modbusDriver>(place))
        return;
    ModbusTable table = ModbusTable::Holding;
    int first = 0;
    int width = 1;
    const Result read = readPoint(row, places, group, table, first, width);
    if (!read) {
        // Without its address a signal would show what another one measures.
        m_refusedRows.insert(number);
        plan.refusals.push_back({number, address.empty() ? "Смещение, тип данных" : addressColumn,
                                 path, read.GetDetail() + "; строка не взята"});
    } else if (group) {
        m_offsets[number] = first;
    } else {
        m_placing.Add(number, folder, path.substr(slash + 1), table, first, width);
    }
}

void SheetImport::arrange(const TextTable &table, std::size_t first, const std::vector<int> &places,
                          SheetPlan &plan)
{
    for (std::size_t i = first; i < table.size(); ++i)
        arrangeRow(table[i], i + 1, places, plan);
    const auto isTaken = [this](const std::string &path) { return m_nodes.count(path) != 0; };
    const KindInfo *kind = KindTable::Instance().Find(NodeType(modbusGroup::Code));
    for (const PlacedGroup &group : m_placing.Arrange(isTaken)) {
        ConfigNode *made = nullptr;
        if (!PlanNode(group.path, *kind, plan, made))
            continue; // its rows are refused with the reason
        --plan.added; // rows are counted
        (void)made->SetProperty(modbusGroup::Prop::Table, int(group.table));
        (void)made->SetProperty(modbusGroup::Prop::Start, group.start);
        (void)made->SetProperty(modbusGroup::Prop::Count, group.count);
    }
}

} // namespace Nodes
