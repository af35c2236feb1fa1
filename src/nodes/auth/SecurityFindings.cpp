#include "nodes/auth/SecurityFindings.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/UnknownNode.h"
#include "nodes/values/FoldCase.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace Nodes {

namespace {

struct Word
{
    std::string_view text;
    std::size_t slips; // letters that may be wrong
    std::string_view meant;
};

constexpr std::array words{
    Word{"authentication", 3, "authentication"},
    Word{"authorization", 2, "authentication"},
    Word{"security", 2, "authentication"},
    Word{"users", 0, "authentication"},
    Word{"roles", 0, "authentication"},
    Word{"user", 1, "user"},
    Word{"role", 1, "role"},
    Word{"grant", 1, "grant"},
};

/// Letters to insert, delete or replace to get from one text to the other.
std::size_t editDistance(std::string_view from, std::string_view to)
{
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t(0));
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

bool isNameEnd(char c)
{
    return c == ' ' || c == '/' || c == '>' || c == '\t' || c == '\n' || c == '\r';
}

std::string_view elementName(std::string_view xml)
{
    const auto begin = xml.empty() ? xml.end() : xml.begin() + 1; // past '<'
    const auto end = std::find_if(begin, xml.end(), isNameEnd);
    return xml.substr(std::size_t(begin - xml.begin()), std::size_t(end - begin));
}

bool contains(std::string_view xml, std::string_view element)
{
    const std::string opening = "<" + std::string(element);
    for (std::size_t at = xml.find(opening); at != xml.npos; at = xml.find(opening, at + 1)) {
        const std::size_t end = at + opening.size();
        if (end < xml.size() && isNameEnd(xml[end]))
            return true;
    }
    return false;
}

/// Kind that the element was probably meant to be; "" when it has nothing to do with users.
std::string_view meantKind(const UnknownNode &node)
{
    const std::string &xml = node.GetXml();
    const std::string name = FoldCase(elementName(xml));
    for (const Word &word : words) {
        if (editDistance(name, word.text) <= word.slips)
            return word.meant;
    }
    for (const std::string_view kind : {"authentication", "user", "role", "grant"}) {
        if (contains(xml, kind))
            return "authentication";
    }
    return {};
}

// Where subsystems are looked for.
bool isInPlace(const systemAuthentication &users)
{
    const ConfigNode *parent = users.GetParent();
    return parent && (!parent->GetParent() || parent->AsStation());
}

template <class Act> void visit(const ConfigNode &node, const Act &act)
{
    act(node);
    for (const auto &child : node.Children())
        visit(*child, act);
}

std::string describe(const ConfigNode &node)
{
    if (const auto *unknown = dynamic_cast<const UnknownNode *>(&node)) {
        const std::string meant(meantKind(*unknown));
        return "неизвестный вид узла «" + std::string(elementName(unknown->GetXml())) +
               "» похож на «" + meant + "»; исправьте имя на «" + meant + "»";
    }
    if (dynamic_cast<const systemAuthentication *>(&node))
        return "подсистема пользователей здесь не действует; перенесите «authentication» прямо в "
               "«station» или в «project»";
    return {};
}

std::string closedText(const std::string &where)
{
    return "в проекте есть пользователи, роли или правила доступа, но " + where +
           " нет действующей подсистемы пользователей: запись значений, открытие окон и команды "
           "запрещены; добавьте «authentication» прямо в «station» или в «project»";
}

void findClosedStations(const ConfigNode &root, const ConfigNode &first,
                        std::vector<ProjectFinding> &findings)
{
    const auto hasUsers = [](const ConfigNode &owner) {
        const auto subsystems = owner.GetObjects(NodeType::TypeSubsystem);
        return std::any_of(subsystems.begin(), subsystems.end(), [](const ConfigNode *node) {
            return dynamic_cast<const systemAuthentication *>(node);
        });
    };
    if (hasUsers(root))
        return;
    const auto stations = root.GetObjects(NodeType(NodeType::SubtypeStation));
    if (stations.empty())
        findings.push_back({&first, closedText("в нём")});
    for (const ConfigNode *station : stations) {
        if (!hasUsers(*station))
            findings.push_back({station, closedText("у станции «" + station->GetName() + "»")});
    }
}

} // namespace

bool SpeaksOfUsers(const ConfigNode &node)
{
    if (node.GetNodeType().GetFamily() == NodeType::TypeSecurity)
        return true;
    if (const auto *users = dynamic_cast<const systemAuthentication *>(&node))
        return !isInPlace(*users);
    const auto *unknown = dynamic_cast<const UnknownNode *>(&node);
    return unknown && !meantKind(*unknown).empty();
}

bool SpeaksOfUsers(const NodesCollection &project)
{
    bool speaks = false;
    if (const ConfigNode *root = project.GetRoot())
        visit(*root, [&speaks](const ConfigNode &node) { speaks = speaks || SpeaksOfUsers(node); });
    return speaks;
}

std::vector<ProjectFinding> FindSecurityGaps(const NodesCollection &project)
{
    std::vector<ProjectFinding> findings;
    const ConfigNode *root = project.GetRoot();
    if (!root)
        return findings;
    const ConfigNode *first = nullptr;
    visit(*root, [&](const ConfigNode &node) {
        if (!SpeaksOfUsers(node))
            return;
        first = first ? first : &node;
        if (std::string text = describe(node); !text.empty())
            findings.push_back({&node, std::move(text)});
    });
    if (first)
        findClosedStations(*root, *first, findings);
    return findings;
}

} // namespace Nodes
