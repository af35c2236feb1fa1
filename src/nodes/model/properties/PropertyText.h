#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyDescriptor.h"
#include "nodes/values/NColor.h"

namespace Nodes {

/// Texts of property values in project files, one overload a type. ParseProperty leaves the value
/// untouched and returns false when the text does not read as that type; numbers outside the
/// descriptor's range do not read. Links refer into `collection`.
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, bool value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, int value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, unsigned value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, double value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, const std::string &value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, const NColor &value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, const NodeLink &value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, const NodeLinks &value);
NODES_EXPORT std::string FormatProperty(const PropertyDescriptor &d, const ResourceLink &value);

using Collection = const NodesCollection *;
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, bool &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, int &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, unsigned &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, double &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, std::string &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, NColor &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, NodeLink &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, NodeLinks &value);
NODES_EXPORT bool ParseProperty(const PropertyDescriptor &d, std::string_view text,
                                Collection collection, ResourceLink &value);

} // namespace Nodes
