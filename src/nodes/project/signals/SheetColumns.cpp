#include "nodes/project/signals/SheetColumns.h"

#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/project/signals/CellText.h"
#include "nodes/values/FoldCase.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <sstream>

namespace Nodes {

namespace {

/// What lists of signals from elsewhere call their columns, in small letters.
constexpr std::pair<std::string_view, std::string_view> usualTitles[] = {
    {"тег", "Имя"},
    {"наименование", "Описание"},
    {"название", "Описание"},
    {"комментарий", "Описание"},
    {"name", "Имя"},
    {"tag", "Имя"},
    {"description", "Описание"},
    {"address", "Адрес"},
    {"регистр", "Адрес"},
    {"минимум", "minimum"},
    {"максимум", "maximum"},
    {"мин", "minimum"},
    {"макс", "maximum"},
    {"ед. изм.", "unit"},
    {"ед.изм.", "unit"},
    {"тип", "dataType"},
    {"коэффициент", "scale"},
};

using Kinds = std::vector<const KindInfo *>;

/// In the order of the alphabet: "запись разрешена" is "разрешена запись".
std::vector<std::string> wordsOf(const std::string &text)
{
    std::istringstream stream(text);
    std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    std::sort(words.begin(), words.end());
    return words;
}

bool isNumber(std::string text)
{
    std::replace(text.begin(), text.end(), ',', '.');
    return ParseDouble(text).has_value();
}

bool isCommon(const PropertyDescriptor &property, const Kinds &kinds)
{
    return std::all_of(kinds.begin(), kinds.end(), [&](const KindInfo *kind) {
        const PropertyDescriptor *own = kind->FindProperty(property.valueId);
        return own && own->IsSameAs(property);
    });
}

/// Declared by a class that others derive from: its value id is one of several kinds.
bool isShared(const PropertyDescriptor &property)
{
    int count = 0;
    for (const KindInfo &kind : KindTable::Instance().GetKinds())
        count += kind.FindProperty(property.valueId) != nullptr;
    return count > 1;
}

void append(Kinds &kinds, const KindInfo *kind)
{
    if (kind && std::find(kinds.begin(), kinds.end(), kind) == kinds.end())
        kinds.push_back(kind);
}

/// "modbusDriver" -> "modbusSignal" or "modbusGroup", for the driver at or above the node.
const KindInfo *kindFor(const ConfigNode *node, const char *wanted)
{
    constexpr std::string_view suffix = "Driver";
    while (node && node->GetNodeType().GetFamily() != NodeType::TypeDriver)
        node = node->GetParent();
    std::string key = node && node->GetKind() ? node->GetKind()->key : std::string();
    if (key.size() <= suffix.size() || key.substr(key.size() - suffix.size()) != suffix)
        return nullptr;
    key.replace(key.size() - suffix.size(), suffix.size(), wanted);
    return KindTable::Instance().FindByKey(key);
}

} // namespace

SheetColumns::SheetColumns(const std::vector<const KindInfo *> &kinds)
{
    m_columns.push_back({SheetColumn::Name, "Имя", nullptr});
    m_columns.push_back({SheetColumn::Kind, "Вид", nullptr});
    std::vector<SheetColumn> common;
    const auto isThere = [](const std::vector<SheetColumn> &columns, const PropertyDescriptor &d) {
        return std::any_of(columns.begin(), columns.end(), [&d](const SheetColumn &column) {
            return column.descriptor && column.descriptor->IsSameAs(d);
        });
    };
    for (const KindInfo *kind : kinds) {
        for (const PropertyDescriptor &property : kind->properties) {
            if (property.binding.type == PropertyType::Secret)
                continue;
            auto &columns = isCommon(property, kinds) && isShared(property) ? common : m_columns;
            if (isThere(columns, property))
                continue;
            // Kinds may call different properties alike; an exported table has to come back.
            const bool isAlike = Find(property.nameRu) >= 0;
            columns.push_back({SheetColumn::Property,
                               property.nameRu + (isAlike ? " (" + kind->nameRu + ")" : ""),
                               &property});
        }
    }
    m_columns.insert(m_columns.end(), common.begin(), common.end());
    m_columns.push_back({SheetColumn::Description, "Описание", nullptr});
}

void SheetColumns::AddSetting(std::string title, const PropertyDescriptor *descriptor)
{
    m_columns.push_back({SheetColumn::Setting, std::move(title), descriptor});
}

int SheetColumns::Find(std::string_view title) const
{
    const std::string folded = FoldCase(title);
    const auto found =
        std::find_if(m_columns.begin(), m_columns.end(), [&](const SheetColumn &column) {
            return FoldCase(column.title) == folded ||
                   (column.descriptor && FoldCase(column.descriptor->key) == folded);
        });
    return found == m_columns.end() ? -1 : int(found - m_columns.begin());
}

int SheetColumns::findUsual(std::string_view title) const
{
    const std::string folded = FoldCase(title);
    for (const auto &[written, meant] : usualTitles) {
        if (folded == written)
            return Find(meant);
    }
    return Find(title);
}

bool SheetColumns::IsHeader(const std::vector<std::string> &row) const
{
    bool hasName = false;
    bool isOwn = false;
    int known = 0;
    for (const std::string &title : row) {
        if (isNumber(title))
            return false;
        const int column = findUsual(title);
        known += column >= 0;
        if (column < 0 || m_columns[std::size_t(column)].what != SheetColumn::Name)
            continue;
        hasName = true;
        isOwn = FoldCase(title) == FoldCase(m_columns[std::size_t(column)].title);
    }
    return hasName && (isOwn || known > 1);
}

int SheetColumns::Guess(std::string_view title) const
{
    const int exact = findUsual(title);
    if (exact >= 0 || title.empty())
        return exact;
    const std::string folded = FoldCase(title);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (wordsOf(FoldCase(m_columns[i].title)) == wordsOf(folded))
            return int(i);
    }
    int only = -1;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const bool isBegin = FoldCase(m_columns[i].title).compare(0, folded.size(), folded) == 0;
        if (isBegin && only >= 0)
            return -1; // several begin so
        only = isBegin ? int(i) : only;
    }
    return only;
}

const PropertyDescriptor *SheetColumns::DescriptorFor(const SheetColumn &column,
                                                      const ConfigNode &node)
{
    if (column.what != SheetColumn::Property || !node.GetKind())
        return nullptr;
    const PropertyDescriptor *own = node.GetKind()->FindProperty(column.descriptor->valueId);
    return own && own->IsSameAs(*column.descriptor) ? own : nullptr;
}

std::string SheetColumns::PathFrom(const ConfigNode &scope, const ConfigNode &node)
{
    std::string path = node.GetName();
    for (const ConfigNode *parent = node.GetParent(); parent && parent != &scope;
         parent = parent->GetParent())
        path.insert(0, parent->GetName() + "/");
    return path;
}

std::string SheetColumns::ShortPathFrom(const ConfigNode &scope, const ConfigNode &node)
{
    if (!dynamic_cast<const modbusSignal *>(&node))
        return PathFrom(scope, node);
    std::string path = node.GetName();
    for (const ConfigNode *parent = node.GetParent(); parent && parent != &scope;
         parent = parent->GetParent()) {
        if (!dynamic_cast<const modbusGroup *>(parent))
            path.insert(0, parent->GetName() + "/");
    }
    return path;
}

std::string SheetColumns::GetText(const SheetColumn &column, const ConfigNode &node,
                                  const ConfigNode &scope)
{
    switch (column.what) {
    case SheetColumn::Name:
        return PathFrom(scope, node);
    case SheetColumn::Kind:
        return node.GetKind() ? node.GetKind()->nameRu : std::string();
    case SheetColumn::Description:
        return node.GetDescription();
    case SheetColumn::Property:
        if (const PropertyDescriptor *own = DescriptorFor(column, node))
            return CellText::Show(*own, node);
        break;
    case SheetColumn::Setting:
        break;
    }
    return {};
}

bool IsSheetRow(const ConfigNode &node, unsigned family)
{
    const NodeType type = node.GetNodeType();
    return type.GetFamily() == family && type.GetSubtype() != NodeType::SubtypeTemplateParameter;
}

std::vector<const KindInfo *> FindSheetKinds(const ConfigNode &scope, unsigned family)
{
    Kinds kinds;
    std::map<const KindInfo *, int> counts;
    for (const NodeLink &link : scope.GetNodes(true)) {
        if (!IsSheetRow(*link.GetNode(), family))
            continue;
        append(kinds, link->GetKind());
        ++counts[link->GetKind()];
    }
    std::stable_sort(kinds.begin(), kinds.end(), [&counts](const auto *left, const auto *right) {
        return counts[left] > counts[right];
    });
    if (kinds.empty() && family == NodeType::TypeSignal) {
        append(kinds, kindFor(&scope, "Signal"));
        if (kinds.empty())
            append(kinds, KindTable::Instance().FindByKey("memorySignal"));
    }
    if (kinds.empty() && family == NodeType::TypeDriverGroup)
        append(kinds, kindFor(&scope, "Group"));
    if (kinds.empty() && family == NodeType::TypeAlarm)
        append(kinds, KindTable::Instance().FindByKey("alarmLimit"));
    return kinds;
}

} // namespace Nodes
