#pragma once

#include <QString>

#include <optional>

class QWidget;

namespace Nodes {
class BasicNode;
}

namespace Widgets {

/// What a dialog is asked for with. Nothing of it is owned; all but `element`, which may go, is
/// used only while the dialog is made.
struct DialogRequest
{
    QWidget *parent = nullptr;        ///< window that it belongs to and dies with; may be null
    const QWidget *element = nullptr; ///< stays in sight: the dialog comes up beside it
    std::optional<int> display;       ///< 0-based; the dialog comes up in its middle
    Nodes::BasicNode *node = nullptr; ///< what it is about
    QString subject;                  ///< the same where it is no node: a path
};

} // namespace Widgets
