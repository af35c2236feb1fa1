#pragma once

namespace Editor {

/// Makes the pictures of this static library known; repeated calls do no harm.
void InitResources();

} // namespace Editor
