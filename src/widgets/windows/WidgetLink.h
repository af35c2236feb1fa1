#pragma once

class QWidget;

namespace Widgets {

/// Identifies one open window: id of its node and its widget. The empty link (0, null) stands for
/// the absence of a window. Keeps nothing alive: the widget may be gone.
struct WidgetLink
{
    unsigned long id = 0;
    QWidget *widget = nullptr;

    WidgetLink() = default;
    WidgetLink(unsigned long nodeId, QWidget *nodeWidget) : id(nodeId), widget(nodeWidget) {}
    WidgetLink(const WidgetLink &) = default;
    WidgetLink &operator=(const WidgetLink &) = default;
    virtual ~WidgetLink() = default;

    bool operator==(const WidgetLink &other) const
    {
        return id == other.id && widget == other.widget;
    }
    bool operator!=(const WidgetLink &other) const { return !(*this == other); }
};

} // namespace Widgets
