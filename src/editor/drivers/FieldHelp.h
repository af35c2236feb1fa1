#pragma once

#include <QString>

#include <string>

namespace Editor {

/// A sentence on what the property of that kind does, Russian, for people at a form; empty when its
/// name says it all.
QString FieldHelp(const std::string &kind, const std::string &property);

} // namespace Editor
