#pragma once

namespace Editor {

class Workspace;

/// Commands that open what a project's data is configured with, without looking for it in the tree.
/// GUI thread.
namespace DataCommands {

/// Table of the signals below the selected node, else of the first station.
void openSignals(Workspace &workspace);
bool hasStation(Workspace &workspace);
/// Users of the first station. Where there is no user subsystem, asks whether to make one.
void openUsers(Workspace &workspace);

} // namespace DataCommands

} // namespace Editor
