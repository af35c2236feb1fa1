#pragma once

#include "nodes/serial/LoadLimits.h"

#include <pugixml.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Nodes {

/// What was wrong with a text, for logs and for the operator.
struct XmlFault
{
    Result::ResultType type = Result::ParseError;
    int line = 0;
    std::string english;
    std::string russian;
};

/// Parsed bytes of an XML file: refuses what is damaged or too large before it takes memory, and
/// knows the line of every element.
class XmlSource
{
public:
    static constexpr unsigned ParseFlags = pugi::parse_default | pugi::parse_comments |
                                           pugi::parse_doctype | pugi::parse_ws_pcdata_single;

    explicit XmlSource(std::string bytes) : m_bytes(std::move(bytes)) {}

    /// Call once. Nothing on success. Entities are never expanded.
    [[nodiscard]] std::optional<XmlFault> Parse(const LoadLimits &limits);

    /// The only top-level element; empty before a successful Parse.
    pugi::xml_node GetRoot() const { return m_document.document_element(); }
    bool HasDoctype() const;
    int LineOf(const pugi::xml_node &node) const { return LineAt(node.offset_debug()); }
    /// 0 for a negative offset.
    int LineAt(std::ptrdiff_t offset) const;

private:
    std::optional<XmlFault> checkBytes() const;
    std::optional<XmlFault> checkCounts(const LoadLimits &limits) const;
    std::optional<XmlFault> checkRoot() const;
    void findLines();

    std::string m_bytes; // parsed in place: nodes point into it
    std::vector<std::uint32_t> m_lineEnds;
    pugi::xml_document m_document;
};

} // namespace Nodes
