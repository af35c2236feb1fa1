#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Nodes::PrivateDirectory {

/// Makes a directory, and the one above it (and what is missing above both), that nobody but this
/// user may write into, also below one that all may write into, such as /var/tmp. Refused when
/// something else stands there, be it a link or a directory of somebody else: records must neither
/// go there nor come from there.
[[nodiscard]] Result Make(const std::string &path);
/// The same without making anything: NotFound when there is none.
[[nodiscard]] Result Check(const std::string &path);

} // namespace Nodes::PrivateDirectory
