#pragma once

#include "widgets/WidgetsExport.h"

#include <functional>
#include <memory>

class QString;
class QWidget;

namespace Nodes {
class BasicWidget;
class Result;
class SignalValue;
} // namespace Nodes

namespace Widgets {

class PlainMessageBox;
class SceneContext;

/// How every element writes what the operator entered. The node checks rights, type and limits;
/// after a success the element's after-write actions run, at run time; a refusal is told and the
/// element returns to what it showed. GUI thread.
class WIDGETS_EXPORT ValueWriter
{
public:
    /// True when the write was accepted: the element then keeps the value. Else `restore` is
    /// called, after the message, with the signals of `element` blocked, so that restoring writes
    /// nothing; not when the element was deleted while the message stood.
    static bool write(QWidget &element, const SceneContext &context, Nodes::BasicWidget &node,
                      const Nodes::SignalValue &value, const std::function<void()> &restore);

    /// Question before that value, as shown, is written, beside the element, for who runs it
    /// modally; Ok: write.
    static std::unique_ptr<PlainMessageBox> question(const QString &shownValue,
                                                     const QWidget &element);
    /// Runs the after-write actions of the element, at run time, on the display where it stands.
    static void runAfterWrite(const QWidget &element, const SceneContext &context,
                              const Nodes::BasicWidget &node);
    /// Modal message of a refused write, one at a time; nothing for success and for code 403.
    static void report(const SceneContext &context, const Nodes::Result &result);
};

} // namespace Widgets
