#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"
#include "widgets/eventlist/DayInterval.h"

#include "utils/relay/WatchedNode.h"

#include <QToolBar>

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

class IntervalAction;

/// Keys of an event list: the interval, its sources, the alarm window, whether new events are
/// followed. GUI thread.
class WIDGETS_EXPORT WidgetEventToolBar : public QToolBar
{
    Q_OBJECT

public:
    WidgetEventToolBar(Nodes::widgetEventList *node, QWidget *parent,
                       const SceneContextPtr &context = SceneContext::process());

    QDateTime getFromDt() const;
    QDateTime getToDt() const;
    void setInterval(const QDateTime &from, const QDateTime &to);
    void setTraking(bool isTracking);
    bool isTracking() const { return m_tracking->isChecked(); }

public slots:
    /// Takes the node's settings: the interval is that of its length up to the end of today.
    void updateProperties();
    void onPrevious();
    void onNext();
    /// As many days up to the end of today.
    void onCurrent();
    void onIntervalAction();
    void onFilterAction();
    void showAlarms();

signals:
    void intervalChanged(QDateTime from, QDateTime to);
    void filterChanged();
    void trackingChanged(bool isTracking);

private:
    QAction *addKey(const QString &text, const QString &tip, void (WidgetEventToolBar::*slot)());
    /// Shows it, tells the node its length in days, and whoever listens.
    void choose(const DayInterval &interval);
    void fitButtons();

    Utils::WatchedNode<Nodes::widgetEventList> m_node;
    SceneContextPtr m_context;
    IntervalAction *m_interval;
    QAction *m_tracking = nullptr;
};

} // namespace Widgets
