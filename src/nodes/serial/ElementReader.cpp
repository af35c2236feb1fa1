#include "nodes/serial/ElementReader.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/links/LinkCycles.h"
#include "nodes/model/validation/FindingCode.h"
#include "nodes/serial/ElementPath.h"
#include "nodes/serial/PropertyHelp.h"
#include "nodes/serial/UnknownNode.h"
#include "nodes/serial/XmlText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nodes {

namespace {

constexpr std::size_t progressStep = 256;

std::string quoted(std::string_view text)
{
    constexpr std::size_t shown = 60;
    std::string part(text.substr(0, shown));
    while (part.size() < text.size() && !part.empty() &&
           (static_cast<unsigned char>(text[part.size()]) & 0xC0) == 0x80)
        part.pop_back();
    std::replace_if(
        part.begin(), part.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    return "«" + part + (part.size() < text.size() ? "…»" : "»");
}

std::string pathOf(const pugi::xml_node &element)
{
    std::string path;
    for (pugi::xml_node at = element; at.type() == pugi::node_element; at = at.parent())
        path = ElementPath::Join(at.name(), at.attribute("name").value(), path);
    return path;
}

/// Name of the nearest driver the element stands in; "" outside of one.
std::string driverAround(pugi::xml_node element)
{
    for (; element.type() == pugi::node_element; element = element.parent()) {
        const KindInfo *kind = KindTable::Instance().FindByKey(element.name());
        if (kind && kind->type.GetFamily() == NodeType::TypeDriver)
            return ElementPath::Join(element.name(), element.attribute("name").value(), {});
    }
    return {};
}

} // namespace

ElementReader::ElementReader(const XmlSource &source, const ElementScan &scan,
                             NodesCollection &project, LoadReport &report, IdMode mode)
    : m_source(source), m_scan(scan), m_project(project), m_report(report), m_mode(mode)
{
}

void ElementReader::Report(LoadMessage::SeverityType severity, const char *code,
                           const pugi::xml_node &place, std::string text) const
{
    // Finding the name passes all attributes: not anew for each of a hundred thousand wrong ones.
    if (place != m_place) {
        m_place = place;
        m_path = pathOf(place);
    }
    m_report.Add({severity, m_file, m_source.LineOf(place), m_path, std::move(text),
                  ParseNodeId(place.attribute("id").value()).value_or(0), code});
}

bool ElementReader::isStopped()
{
    if (m_fault)
        return true;
    ++m_done;
    if (!m_progress || m_done % progressStep != 0)
        return false;
    m_progress->SetDone(m_done);
    if (m_progress->IsCancelled())
        m_fault = XmlFault{Result::Cancelled, 0, "cancelled", "загрузка прервана"};
    return m_fault.has_value();
}

unsigned long ElementReader::idOf(const pugi::xml_node &element)
{
    const std::string_view text = element.attribute("id").value();
    const auto id = ParseNodeId(text);
    if (m_mode == FreshIds) {
        const unsigned long fresh = m_project.NewId();
        if (id)
            m_ids.emplace(*id, fresh);
        return fresh;
    }
    const auto earlier = m_scan.GetEarlier(element);
    if (id && !earlier)
        return *id;
    const unsigned long fresh = m_project.NewId();
    const std::string given = "; узлу присвоен номер " + std::to_string(fresh);
    if (!id)
        Report(LoadMessage::Error, FindingCode::NoId, element,
               text.empty() ? "нет атрибута id" + given
                            : "id=" + quoted(text) + " — ожидается целое число больше 0" + given);
    else
        Report(LoadMessage::Error, FindingCode::RepeatedId, element,
               "номер id=" + std::to_string(*id) + " уже занят узлом в строке " +
                   std::to_string(m_source.LineAt(*earlier)) + " (этот узел — в строке " +
                   std::to_string(m_source.LineOf(element)) + ")" + given +
                   "; проверьте ссылки на него");
    return fresh;
}

std::unique_ptr<ConfigNode> ElementReader::Read(pugi::xml_node element)
{
    if (isStopped())
        return nullptr;
    const KindInfo *kind = KindTable::Instance().FindByKey(element.name());
    if (!kind || kind->type.GetSubtype() == NodeType::SubtypeUnknown)
        return readUnknown(element);
    std::unique_ptr<ConfigNode> node = m_project.CreateDetached(*kind, idOf(element));
    node->SetName({});
    if (m_mode == KeepIds)
        m_places.push_back({node.get(), m_source.LineOf(element)});
    readAttributes(element, *node);
    readChildren(element, *node);
    return m_fault ? nullptr : std::move(node);
}

std::unique_ptr<ConfigNode> ElementReader::readUnknown(const pugi::xml_node &element)
{
    const KindInfo *kind = KindTable::Instance().Find(NodeType(NodeType::SubtypeUnknown));
    if (!kind) {
        m_fault = XmlFault{Result::NotAvailable, m_source.LineOf(element),
                           "this program has no node kinds, not even the one that keeps unknown "
                           "elements: call KindTable::Provide or Add before reading",
                           "в программе не зарегистрированы виды узлов, прочитать нечем"};
        return nullptr;
    }
    std::unique_ptr<ConfigNode> node = m_project.CreateDetached(*kind, idOf(element));
    const std::string_view name = element.attribute("name").value();
    node->SetName(std::string(name.empty() ? element.name() : name));
    node->SetDescription(element.attribute("description").value());
    static_cast<UnknownNode &>(*node).SetXml(PrintXml(element, pugi::format_raw));
    if (m_mode == KeepIds)
        m_places.push_back({node.get(), m_source.LineOf(element)});
    Report(LoadMessage::Warning, FindingCode::UnknownKind, element,
           "неизвестный вид узла " + quoted(element.name()) +
               "; он сохраняется без изменений, но не работает");
    return node;
}

void ElementReader::readChildren(pugi::xml_node element, ConfigNode &node)
{
    // Pieces between children become one, so that saving and reading again changes nothing.
    std::string text;
    while (const pugi::xml_node child = element.first_child()) {
        if (child.type() == pugi::node_element || child.type() == pugi::node_comment)
            readChild(child, element, node);
        else
            readText(child.value(), element, text);
        element.remove_child(child);
    }
    if (!text.empty())
        node.AddForeignAttribute(TextKey, std::move(text));
}

void ElementReader::readText(std::string_view text, const pugi::xml_node &element,
                             std::string &all) const
{
    constexpr const char *blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return;
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    Report(LoadMessage::Warning, FindingCode::IdleText, element,
           "текст " + quoted(text) + " внутри элемента не используется");
    all.append(all.empty() ? "" : "\n").append(text);
}

void ElementReader::readChild(const pugi::xml_node &child, const pugi::xml_node &element,
                              ConfigNode &node)
{
    if (child.type() == pugi::node_comment) {
        node.AddForeignAttribute(CommentKey, child.value());
    } else if (std::unique_ptr<ConfigNode> made = Read(child)) {
        const NodeType type = made->GetNodeType();
        if (type.GetSubtype() != NodeType::SubtypeUnknown && !node.GetKind()->AllowsChild(type))
            Report(LoadMessage::Error, FindingCode::Misplaced, child,
                   "узел вида " + quoted(child.name()) + " не может находиться внутри " +
                       quoted(element.name()) + "; он сохранён, перенесите или удалите его");
        else
            checkDriver(*made, child, element);
        node.Append(std::move(made));
    }
}

/// Each driver would keep its own signals, but whose they are could only be guessed from the file.
void ElementReader::checkDriver(const ConfigNode &made, const pugi::xml_node &child,
                                const pugi::xml_node &element) const
{
    if (made.GetNodeType().GetFamily() != NodeType::TypeDriver)
        return;
    const std::string outer = driverAround(element);
    if (!outer.empty())
        Report(LoadMessage::Error, FindingCode::NestedDriver, child,
               "драйвер стоит внутри драйвера " + quoted(outer) +
                   "; он работает сам по себе, перенесите его на уровень станции");
}

// The first one counts: paths and links were made with its id and name.
bool ElementReader::isRepeated(const pugi::xml_node &element, std::string_view key,
                               std::string_view value, bool wasSeen) const
{
    if (wasSeen)
        Report(LoadMessage::Error, FindingCode::RepeatedAttribute, element,
               "атрибут " + quoted(key) + " указан повторно; значение " + quoted(value) +
                   " отброшено");
    return wasSeen;
}

void ElementReader::readAttributes(const pugi::xml_node &element, ConfigNode &node)
{
    m_seen.assign(node.GetKind()->properties.size(), false);
    m_seenCommon.fill(false);
    m_seenForeign.clear();
    const bool isRoot = element.parent().type() == pugi::node_document;
    for (const pugi::xml_attribute &attribute : element.attributes()) {
        const std::string_view key = attribute.name();
        const std::string_view value = attribute.value();
        if (value.size() > m_attributeLimit) {
            m_fault = XmlFault{Result::LimitExceeded, m_source.LineOf(element),
                               "attribute " + std::string(key) + " too long",
                               "слишком длинное значение атрибута " + quoted(key) + ", предел " +
                                   std::to_string(m_attributeLimit) + " байт"};
            return;
        }
        if (isRoot && IsHeaderKey(key))
            (void)isRepeated(element, key, value, !m_seenForeign.insert(key).second);
        else
            readAttribute(element, node, key, value);
    }
}

void ElementReader::readAttribute(const pugi::xml_node &element, ConfigNode &node,
                                  std::string_view key, std::string_view value)
{
    static constexpr std::array<std::string_view, 3> common{"id", "name", "description"};
    const auto found = std::find(common.begin(), common.end(), key);
    if (found == common.end()) {
        readProperty(element, node, key, value);
        return;
    }
    const auto index = std::size_t(found - common.begin());
    if (isRepeated(element, key, value, std::exchange(m_seenCommon[index], true)))
        return;
    if (key == "name")
        node.SetName(std::string(value));
    else if (key == "description")
        node.SetDescription(std::string(value));
}

void ElementReader::readProperty(const pugi::xml_node &element, ConfigNode &node,
                                 std::string_view key, std::string_view value)
{
    const KindInfo &kind = *node.GetKind();
    const PropertyDescriptor *d = kind.FindProperty(key);
    if (!d) {
        if (isRepeated(element, key, value, !m_seenForeign.insert(key).second))
            return;
        Report(LoadMessage::Warning, FindingCode::UnknownAttribute, element,
               "неизвестный атрибут " + quoted(key) + "=" + quoted(value) +
                   "; он сохраняется, но не действует");
        node.AddForeignAttribute(std::string(key), std::string(value));
        return;
    }
    const auto index = static_cast<std::size_t>(d - kind.properties.data());
    if (isRepeated(element, key, value, m_seen[index]))
        return;
    m_seen[index] = true;
    if (d->binding.parse(*d, node, value))
        return;
    Report(LoadMessage::Error, FindingCode::BadValue, element,
           quoted(key) + "=" + quoted(value) + " — ожидается " + DescribeExpected(*d) +
               "; действует значение по умолчанию " + quoted(d->defaultText));
    node.AddForeignAttribute(std::string(key), std::string(value));
}

void ElementReader::reportNode(const Place &place, const char *code, std::string text) const
{
    m_report.Add({LoadMessage::Error, m_file, place.line, ElementPath::Of(*place.node),
                  std::move(text), place.node->GetId(), code});
}

void ElementReader::checkDangling() const
{
    for (const Place &place : m_places) {
        const KindInfo &kind = *place.node->GetKind();
        VisitLinks(*place.node, kind, [&](const PropertyDescriptor &d, const NodeLink &link) {
            if (!m_project.FindNode(link.GetNodeId()))
                reportNode(place, FindingCode::NoTarget,
                           quoted(d.key) + " ссылается на узел " +
                               std::to_string(link.GetNodeId()) +
                               ", которого нет в проекте; выберите другой узел или очистите "
                               "свойство");
        });
    }
}

void ElementReader::checkCycles() const
{
    std::vector<const ConfigNode *> nodes;
    for (const Place &place : m_places)
        nodes.push_back(place.node);
    const std::vector<LinkCycle> cycles = FindLinkCycles(nodes);
    if (cycles.empty())
        return;
    const auto places = indexPlaces();
    for (const LinkCycle &cycle : cycles)
        reportNode(*places.at(cycle.node), FindingCode::LinkCycle,
                   quoted(cycle.property->key) + " ссылается на узел " +
                       std::to_string(cycle.target->GetId()) +
                       ", который сам ведёт обратно; разорвите кольцо ссылок");
}

void ElementReader::checkWhole() const
{
    std::vector<ProjectFinding> findings;
    for (const KindTable::ProjectCheck check : KindTable::Instance().GetChecks()) {
        std::vector<ProjectFinding> found = check(m_project);
        std::move(found.begin(), found.end(), std::back_inserter(findings));
    }
    if (findings.empty())
        return;
    const auto places = indexPlaces();
    for (const ProjectFinding &finding : findings)
        reportNode(*places.at(finding.node), FindingCode::WholeProject, finding.text);
}

std::unordered_map<const ConfigNode *, const ElementReader::Place *>
ElementReader::indexPlaces() const
{
    std::unordered_map<const ConfigNode *, const Place *> places;
    for (const Place &place : m_places)
        places.emplace(place.node, &place);
    return places;
}

void ElementReader::TakeLines(std::unordered_map<unsigned long, int> &lines) const
{
    for (const Place &place : m_places)
        lines.emplace(place.node->GetId(), place.line);
}

void ElementReader::CheckProject()
{
    checkDangling();
    checkCycles();
    checkWhole();
}

} // namespace Nodes
