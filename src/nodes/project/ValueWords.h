#pragma once

#include "nodes/model/properties/PropertyDescriptor.h"

#include <string>
#include <string_view>

namespace Nodes {

/// What a property holds, in words for people: names of choices, paths of nodes, "да" and "нет",
/// long texts shortened. Secrets are not told.
std::string ValueWords(const PropertyDescriptor &descriptor, const BasicNode &node);
/// A text in quotes, shortened; "пусто" for none.
std::string QuotedWords(std::string_view text);

} // namespace Nodes
