#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"

#include "nodes/events/EventInfo.h"
#include "nodes/values/Result.h"
#include "nodes/visual/events/widgetEventList.h"

#include <QTimer>
#include <QWidget>

#include <vector>

namespace Widgets {

class ChartCover;
class EventCommands;
class EventDetails;
class EventFilterBar;
class EventLoader;
class EventStatusBar;
class WaitBox;
class WidgetEventModel;
class WidgetEventSortModel;
class WidgetEventToolBar;
class WidgetEventView;

/// Element of an event list: the journal of an interval of days in a table, with what is stored
/// while it is shown. GUI thread.
class WIDGETS_EXPORT WidgetEvent : public QWidget, public IWidget
{
    Q_OBJECT

public:
    using Node = Nodes::widgetEventList;

    explicit WidgetEvent(Nodes::widgetEventList *node, QWidget *parent = nullptr,
                         const SceneContextPtr &context = SceneContext::process());
    ~WidgetEvent() override;

    /// Asks for the events between two times, seconds since 1970-01-01 00:00 UTC. True: accepted,
    /// the answer follows, and replaces what is shown when it begins; with `isWaitShown` that has
    /// happened, or was given up, when this returns. Nothing outside of run time.
    bool getHistory(double from, double to, bool isWaitShown);
    /// The same for the interval of the tool bar, with the box.
    bool getLastHistory();

    WidgetEventToolBar *toolBar() const { return m_toolBar; }
    WidgetEventView *view() const { return m_view; }
    WidgetEventModel *model() const { return m_model; }
    WidgetEventSortModel *sortModel() const { return m_sorting; }
    EventStatusBar *statusBar() const { return m_status; }
    EventFilterBar *filterBar() const { return m_bar; }
    EventDetails *details() const { return m_details; }
    EventCommands *commands() const { return m_commands; }
    WaitBox *waitBox() const { return m_waitBox; }

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS
public slots:
    /// The answer, or its first page: replaces what is shown.
    void onGetHistoryCompleted(std::vector<Nodes::EventInfo> events);
    /// Live events: those of the interval are shown.
    void onEventsStored(std::vector<Nodes::EventInfo> events);

protected:
    void onActive(bool on) override;
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    void build();
    void connectParts();
    void takeFilter();
    void showDetails();
    void setDetailsShown(bool isShown);
    void watchUser();
    void restore();
    void keep();
    void takeSources(const std::optional<std::vector<unsigned long>> &ids);
    Nodes::EventChoice wantedChoice() const;
    void takeInterval(const Nodes::widgetEventList &node);
    void takeTable(const Nodes::widgetEventList &node);
    void takeLook(const Nodes::widgetEventList &node);
    void schedule();
    void onScheduled();
    void onIntervalChanged();
    void onSourcesChanged();
    void onTrackingChanged(bool isTracking);
    void onContinued(const std::vector<Nodes::EventInfo> &events);
    void onEnded(const Nodes::Result &result, bool isCut);
    void onCancelled();
    void onClock();
    void waitForAnswer();
    void append(const std::vector<Nodes::EventInfo> &events);
    void showCounts();
    bool isFull() const;
    bool isReadingFull() const;
    void onScrolled();
    /// Greatest number of the journal that is shown.
    unsigned long lastNumber() const;
    int countBehind(unsigned long number) const;

    Utils::WatchedNode<Nodes::widgetEventList> m_list;
    WidgetEventModel *m_model;
    WidgetEventSortModel *m_sorting;
    EventLoader *m_loader;
    QWidget *m_body;
    WidgetEventToolBar *m_toolBar;
    EventFilterBar *m_bar;
    WidgetEventView *m_view;
    EventDetails *m_details;
    EventStatusBar *m_status;
    EventCommands *m_commands;
    ChartCover *m_cover;
    WaitBox *m_waitBox;
    QTimer m_scheduled;
    QTimer m_clock;
    QTimer m_keeping; // what the operator chose is kept some time after
    Nodes::ScopedConnection m_userConnection;
    bool m_isTooLong = false;    // the interval has more than the list holds
    Nodes::EventChoice m_choice; // what was asked for last
    bool m_isOwed = false;       // a request that nobody could see the answer of yet
    ElementBinding m_binding;
};

} // namespace Widgets
