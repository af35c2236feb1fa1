#pragma once

#include "nodes/model/links/NodeLink.h"

class QUndoCommand;

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

    /// Whether instances are selected, and nothing else.
    static bool canChoose(Workspace &workspace);
    /// Asks for the template that they all show from now on: none that would show itself.
    static void choose(Workspace &workspace);
    /// The same without asking; null when they show it already or one of them cannot. The caller
    /// owns it.
    static QUndoCommand *makeChoice(const Nodes::NodeLinks &instances,
                                    const Nodes::NodeLink &source);

    /// What a double click on an element does: opens the template of an instance, or goes to
    /// the property where one is chosen. Other elements are left alone.
    static void enter(Workspace &workspace, const Nodes::NodeLink &element);

    /// Whether the selected node shows, opens or stands in a template.
    static bool canOpen(Workspace &workspace);
    /// Opens that template, where all of its instances are edited.
    static void open(Workspace &workspace);
};

} // namespace Editor
