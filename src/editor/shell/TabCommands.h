#pragma once

namespace Editor {

class Workspace;

/// The menu "Вид/Вкладки".
namespace TabCommands {

bool hasTab(Workspace &workspace);
bool hasSeveral(Workspace &workspace);
bool canReopen(Workspace &workspace);
void close(Workspace &workspace);
void closeOthers(Workspace &workspace);
void reopen(Workspace &workspace);
void next(Workspace &workspace);
void previous(Workspace &workspace);

} // namespace TabCommands

} // namespace Editor
