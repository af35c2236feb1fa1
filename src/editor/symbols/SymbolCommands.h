#pragma once

class QUndoCommand;

namespace Nodes {
class widgetSymbol;
}

namespace Editor {

struct SymbolRow;
class Workspace;

/// What the palette and the menus do with symbols, each as one step of the history. GUI thread.
class SymbolCommands
{
public:
    /// Puts the symbol into the middle of what is shown of the active scene and selects it; tells
    /// the user when no scene is open.
    static void insert(Workspace &workspace, const SymbolRow &row);

    /// Whether a symbol with a signal and without states is selected.
    static bool canFillStates(Workspace &workspace);
    /// Gives each such symbol the states that values of its signal usually have.
    static void fillStates(Workspace &workspace);
    /// The same for one symbol; null when its signal has no usual states. Owned by the caller.
    static QUndoCommand *makeStates(const Nodes::widgetSymbol &symbol, QUndoCommand *parent);
};

} // namespace Editor
