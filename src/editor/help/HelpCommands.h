#pragma once

namespace Editor {

class Workspace;

/// The menu "Справка".
namespace HelpCommands {

bool always(Workspace &workspace);
bool hasDocuments(Workspace &workspace);
void showKeys(Workspace &workspace);
void openDocuments(Workspace &workspace);
void showAbout(Workspace &workspace);

} // namespace HelpCommands

} // namespace Editor
