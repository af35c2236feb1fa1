#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>
#include <vector>

namespace Nodes {
class AlarmFeed;
class systemAlarming;
} // namespace Nodes

namespace Widgets {

/// The alarms' way from the node model to the GUI thread: of each alarm its latest state, many at
/// a time, past the queue of actions. Nothing is lost however fast they change; what was overtaken
/// is in the journal only. GUI thread.
class WIDGETS_EXPORT AlarmRelay : public QObject
{
    Q_OBJECT

public:
    /// Begins with how all alarms stand. The subsystem outlives the relay.
    explicit AlarmRelay(Nodes::systemAlarming &alarming, QObject *parent = nullptr);
    ~AlarmRelay() override;

signals:
    /// How alarms stand now, each once. Connect directly.
    void arrived(const std::vector<Nodes::BasicEvent> &alarms);
    /// Alarms, by their ids, that the subsystem did not know any more when it had started anew.
    void forgotten(const QSet<unsigned long> &alarms);

private:
    class Target;

    void wish();
    void onPaused();
    void take();

    const Nodes::systemAlarming &m_alarming;
    std::shared_ptr<Target> m_target;
    std::unique_ptr<Nodes::AlarmFeed> m_feed;
    QTimer m_pause; // between two batches
    bool m_isWished = false;
    bool m_isAnew = false;
    QSet<unsigned long> m_active;  // as told, by id
    QSet<unsigned long> m_earlier; // those that were so before the subsystem started anew
};

} // namespace Widgets
