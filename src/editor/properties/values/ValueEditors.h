#pragma once

class QWidget;

namespace Nodes {
struct PropertyDescriptor;
}

namespace Editor {

class ValueEditor;
struct ValueContext;

/// Editor for the property of the context; a plain line of text without one. Never null. Owned by
/// the parent. Values of yes and no and lists of links are edited without: in their cell and in a
/// dialog; a list's editor shows its names and opens nothing.
ValueEditor *makeValueEditor(const ValueContext &context, QWidget *parent);

/// False for what is edited as a plain line of text.
bool hasOwnEditor(const Nodes::PropertyDescriptor &descriptor);

} // namespace Editor
