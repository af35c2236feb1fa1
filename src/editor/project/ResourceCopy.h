#pragma once

#include "nodes/values/Result.h"

#include <QString>

namespace Editor {

/// Copies pictures, sounds, templates and whatever else lies in a project's directory into another
/// one; the project file, its earlier version, records, hidden files and what lies outside,
/// whatever link leads there, stay behind. What the target has already is left as it is;
/// Duplicate, and nothing is copied, when that differs. Nothing is copied either from a directory
/// that is gone. StorageError names the file that could not be copied.
[[nodiscard]] Nodes::Result CopyResources(const QString &from, const QString &to);

} // namespace Editor
