#pragma once

#include "nodes/model/properties/PropertyDescriptor.h"

#include <msgpack/object_fwd.hpp>

#include <string>

namespace Nodes {

/// False unless the object is a text of well-formed UTF-8 without zero bytes.
bool ReadPackedText(const msgpack::object &object, std::string &text);

/// False when the object does not fit the property's type, range or choices; the node is then
/// untouched.
bool ReadPackedValue(const PropertyDescriptor &descriptor, BasicNode &node,
                     const msgpack::object &object);

} // namespace Nodes
