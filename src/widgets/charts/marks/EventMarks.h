#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/marks/MarkClusters.h"

#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"
#include "utils/relay/QueueRelay.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <unordered_set>
#include <vector>

class QPoint;

namespace Widgets {

class ChartGroupManager;
class JournalAsker;
class MarksItem;
class Plot;

/// Events of the journal and alarms that are about the signals of a plot, as marks along its time
/// axis: shape and colour by level and priority, told where one points at them. What happened
/// within the window is asked of the journal, what happens now comes by itself. GUI thread.
class WIDGETS_EXPORT EventMarks : public QObject
{
    Q_OBJECT

public:
    /// Of one window at most, the newest; more than that no operator reads from marks.
    static constexpr std::size_t MaximumEvents = 2000;

    EventMarks(Plot *plot, ChartGroupManager *manager);
    ~EventMarks() override;

    void setShown(bool isShown);
    bool isShown() const { return m_isShown; }
    /// In the order of time.
    const std::vector<Nodes::BasicEvent> &events() const { return m_events; }
    /// What is told at that place of the canvas; "" where there is no mark.
    QString textAt(const QPoint &place) const;
    bool eventFilter(QObject *watched, QEvent *event) override;

    /// Follows the signals of the plot that the user may view.
    void takeSources();

signals:
    /// The marks are those of the present window.
    void completed();

private:
    void ask();
    void onAnswered(const Nodes::Result &result, std::vector<Nodes::BasicEvent> events);
    void onLive(std::vector<Nodes::BasicEvent> events);
    void show();

    QPointer<Plot> m_plot;
    QPointer<ChartGroupManager> m_manager;
    MarksItem *m_item; // the plot deletes it if it goes first
    JournalAsker *m_asker;
    std::vector<Nodes::BasicEvent> m_events;
    std::vector<Nodes::BasicEvent> m_arrived;    // those of them that came live, the latest
    std::unordered_set<unsigned long> m_sources; // ids of signals and of their alarms
    Utils::QueueRelay<Nodes::BasicEvent> m_live;
    Nodes::ScopedConnection m_connection;
    QTimer m_delay;
    bool m_isShown = true;
};

} // namespace Widgets
