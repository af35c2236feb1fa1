#pragma once

#include <pugixml.hpp>

#include <string>

namespace Nodes {

class ConfigNode;

/// Foreign attributes under these keys are no attributes in the file: no attribute is named so.
constexpr const char *CommentKey = "#comment";
constexpr const char *TextKey = "#text";
/// On the root of a project that a newer program wrote: its format.
constexpr const char *NewerFormatKey = "#newer-format";

/// Whether a foreign attribute may have that key: it is written as an attribute's name.
bool IsForeignKey(const std::string &key);

/// Text of an element with everything below it.
std::string PrintXml(const pugi::xml_node &node, unsigned flags);

/// Appends the node and its descendants as elements: id, name, description, those properties that
/// differ from a fresh node's in the table's order, then what no kind took.
void WriteNodeXml(const ConfigNode &node, pugi::xml_node parent);

} // namespace Nodes
