#pragma once

#include <QString>

namespace Nodes {
class NodesCollection;
struct PropertyDescriptor;
} // namespace Nodes

namespace Editor {

/// What engineers read of properties, in Russian. `text` is a value as project files write it,
/// links refer into `project`.
class PropertyTexts
{
public:
    /// Stands for values that differ.
    static QString mixed();
    /// The value in one line.
    static QString shown(const Nodes::PropertyDescriptor &descriptor, const QString &text,
                         const Nodes::NodesCollection *project);
    /// What may be set: type, range, the names of choices.
    static QString admissible(const Nodes::PropertyDescriptor &descriptor);
    /// Why `text` was not taken.
    static QString refusal(const Nodes::PropertyDescriptor &descriptor, const QString &text);
    /// Name, key, what is admissible, value of a fresh node.
    static QString help(const Nodes::PropertyDescriptor &descriptor,
                        const Nodes::NodesCollection *project);
};

} // namespace Editor
