#pragma once

namespace Editor {

class Workspace;

/// Commands of the menus on the nodes selected, in the tree or in a scene. GUI thread.
namespace NodeCommands {

bool hasNodes(Workspace &workspace);
bool canRename(Workspace &workspace);
/// In the project tree, where the name is seen among its siblings.
void rename(Workspace &workspace);
void findUsages(Workspace &workspace);
void replaceNode(Workspace &workspace);
void replacePattern(Workspace &workspace);
void findNode(Workspace &workspace);

} // namespace NodeCommands

} // namespace Editor
