#pragma once

#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/serial/ElementScan.h"
#include "nodes/serial/LoadProgress.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/serial/XmlSource.h"

#include <array>
#include <unordered_set>

namespace Nodes {

/// Makes nodes of elements. Nothing of the elements is lost: what no kind takes is kept aside in
/// the node and reported.
class ElementReader
{
public:
    enum IdMode {
        KeepIds, ///< a project of its own
        FreshIds ///< a part that is copied into a project; see GetIds
    };

    ElementReader(const XmlSource &source, const ElementScan &scan, NodesCollection &project,
                  LoadReport &report, IdMode mode);
    void SetFile(std::string name) { m_file = std::move(name); }
    void SetProgress(LoadProgress *progress) { m_progress = progress; }
    void SetAttributeLimit(std::size_t bytes) { m_attributeLimit = bytes; }

    /// Node of the element with its descendants, detached. Null after a cancel or when a limit was
    /// exceeded: see GetFault. The scan has bounded the depth. Elements below are freed as soon as
    /// they are read, so that text and tree are not in memory both.
    std::unique_ptr<ConfigNode> Read(pugi::xml_node element);
    /// Reports links that lead nowhere, circles of links and what the table's checks of projects
    /// find; after the tree has been installed.
    void CheckProject();

    const std::optional<XmlFault> &GetFault() const { return m_fault; }
    /// Ids in the text and those given instead, in FreshIds mode.
    const IdMap &GetIds() const { return m_ids; }
    /// `code`: see FindingCode.
    void Report(LoadMessage::SeverityType severity, const char *code, const pugi::xml_node &place,
                std::string text) const;
    /// Adds the line of every node that was read, by its id.
    void TakeLines(std::unordered_map<unsigned long, int> &lines) const;

private:
    struct Place
    {
        const ConfigNode *node;
        int line;
    };

    void checkDangling() const;
    void checkCycles() const;
    void checkWhole() const;
    std::unordered_map<const ConfigNode *, const Place *> indexPlaces() const;
    void reportNode(const Place &place, const char *code, std::string text) const;
    std::unique_ptr<ConfigNode> readUnknown(const pugi::xml_node &element);
    void checkDriver(const ConfigNode &made, const pugi::xml_node &child,
                     const pugi::xml_node &element) const;
    void readChild(const pugi::xml_node &child, const pugi::xml_node &element, ConfigNode &node);
    void readText(std::string_view text, const pugi::xml_node &element, std::string &all) const;
    void readChildren(pugi::xml_node element, ConfigNode &node);
    bool isRepeated(const pugi::xml_node &element, std::string_view key, std::string_view value,
                    bool wasSeen) const;
    void readAttributes(const pugi::xml_node &element, ConfigNode &node);
    void readAttribute(const pugi::xml_node &element, ConfigNode &node, std::string_view key,
                       std::string_view value);
    void readProperty(const pugi::xml_node &element, ConfigNode &node, std::string_view key,
                      std::string_view value);
    unsigned long idOf(const pugi::xml_node &element);
    bool isStopped();

    const XmlSource &m_source;
    const ElementScan &m_scan;
    NodesCollection &m_project;
    LoadReport &m_report;
    IdMode m_mode;
    std::string m_file;
    LoadProgress *m_progress = nullptr;
    std::size_t m_attributeLimit = LoadLimits().attributeLength;
    std::size_t m_done = 0;
    std::optional<XmlFault> m_fault;
    IdMap m_ids;
    std::vector<bool> m_seen;                           // properties of the element being read
    std::array<bool, 3> m_seenCommon{};                 // its id, name and description
    std::unordered_set<std::string_view> m_seenForeign; // its other attributes
    std::vector<Place> m_places;                        // in the order of the text
    mutable pugi::xml_node m_place;                     // last reported
    mutable std::string m_path;                         // of it
};

} // namespace Nodes
