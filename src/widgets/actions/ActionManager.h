#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodeLink.h"

#include <QMutex>
#include <QObject>
#include <QVector>

#include <optional>
#include <vector>

class QGraphicsSceneHoverEvent;
class QGraphicsSceneMouseEvent;
class QMouseEvent;

namespace Nodes {
class BasicWidget;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class ActionManagerDestroyer;
class ProxyWidget;
class WindowBasic;

/// Turns mouse gestures on windows and elements into their configured action lists and hands them
/// to the window manager. Event filter of every runtime window, its viewport, and every element
/// host; consumes no event and executes nothing itself. GUI thread.
class WIDGETS_EXPORT ActionManager : public QObject
{
    Q_OBJECT

public:
    static ActionManager &getInstance();

    /// Queues the list and passes it on at once; nothing happens without a window manager.
    void appendActions(std::vector<Nodes::NodeLink> const &actions);

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onPushActions();

private:
    friend class ActionManagerDestroyer;

    /// What tells an event that Qt passes on from a window's child to the window itself.
    struct Gesture
    {
        int type = 0;
        unsigned long timestamp = 0;
        QPoint point;
        bool operator==(const Gesture &o) const
        {
            return type == o.type && timestamp == o.timestamp && point == o.point;
        }
    };

    ActionManager();
    ~ActionManager() override;

    Nodes::NodeLinks getMouseActions(Nodes::BasicWidget *node, QGraphicsSceneMouseEvent *event);
    Nodes::NodeLinks getMouseActions(Nodes::BasicWindow *node, QMouseEvent *event);
    Nodes::NodeLinks getHoverActions(Nodes::BasicWidget *node, QGraphicsSceneHoverEvent *event);
    Nodes::NodeLinks getHoverActions(Nodes::BasicWindow *node, QEvent *event);

    void filterElement(ProxyWidget &element, QEvent &event);
    void filterWindow(WindowBasic &window, QObject *watched, QEvent &event);
    bool isSeenBefore(bool isChild, const QEvent &event);
    void trigger(const Nodes::NodeLinks &actions, int display);

    QMutex m_mutex;
    QVector<Nodes::NodeLink> m_pending;
    std::optional<Gesture> m_passedOn; // handled on a window's child, not yet seen on the window
};

} // namespace Widgets
