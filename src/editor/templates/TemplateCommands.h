#pragma once

namespace Editor {

class Workspace;

/// Templates from the menus, each change one step of the history. GUI thread.
class TemplateCommands
{
public:
    /// Whether elements are selected.
    static bool canMake(Workspace &workspace);
    /// Makes a template window and an action that opens it for the selected elements, beside their
    /// window, and shows it.
    static void make(Workspace &workspace);
};

} // namespace Editor
