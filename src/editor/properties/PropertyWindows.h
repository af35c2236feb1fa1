#pragma once

class QWidget;

namespace Editor {

class PropertyModel;
struct PropertyHost;
struct PropertyRow;

/// Windows for what is more than one value: lists of nodes, fonts, children. What is changed in
/// them is made at once, each change a step of its own.
class PropertyWindows
{
public:
    /// Whether the row is edited in a window.
    static bool has(const PropertyRow &row);
    /// Opens it for the nodes of the model, which outlives it as the parent does. It deletes itself
    /// and closes when they are gone.
    static void open(const PropertyRow &row, PropertyModel &model, const PropertyHost &host,
                     QWidget &parent);
};

} // namespace Editor
