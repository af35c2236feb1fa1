#pragma once

namespace Editor {

class Workspace;

namespace JumpCommands {

/// Asks where to go and goes there; commands are possible without a project too.
void jump(Workspace &workspace);

} // namespace JumpCommands

} // namespace Editor
