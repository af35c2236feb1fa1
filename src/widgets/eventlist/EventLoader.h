#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/SeenEvents.h"

#include "nodes/events/EventInfo.h"
#include "nodes/values/Connection.h"
#include "nodes/visual/events/widgetEventList.h"
#include "utils/relay/QueueRelay.h"
#include "utils/relay/WatchedNode.h"

#include <QMetaType>
#include <QObject>

#include <vector>

Q_DECLARE_METATYPE(std::vector<Nodes::EventInfo>)

namespace Widgets {

/// Brings the events of a list from the model's threads to the GUI thread: the pages of an answer
/// and what is stored meanwhile, each event once. A member of the list. GUI thread.
class WIDGETS_EXPORT EventLoader : public QObject
{
    Q_OBJECT

public:
    explicit EventLoader(Nodes::widgetEventList *node, QObject *parent = nullptr);
    ~EventLoader() override;

    /// Seconds since 1970-01-01 00:00 UTC. Success: the answer follows.
    [[nodiscard]] Nodes::Result ask(unsigned long long from, unsigned long long to,
                                    const Nodes::EventChoice &choice = {});
    /// What has come stays; nothing more does.
    void cancel();
    bool isAsking() const { return m_isAsking; }
    /// The answer has begun.
    bool hasBegun() const { return m_hasBegun; }

signals:
    /// First page of the answer to the newest request: it replaces what there was.
    void begun(std::vector<Nodes::EventInfo> events);
    /// A later page.
    void continued(std::vector<Nodes::EventInfo> events);
    /// All was read; `isCut`: the interval has more, older ones. A failure has its result.
    void ended(Nodes::Result result, bool isCut);
    /// Stored in the journal just now.
    void stored(std::vector<Nodes::EventInfo> events);

private:
    using Page = Nodes::widgetEventList::Page;

    void onPages(std::vector<Page> pages);
    void onPage(Page &page);
    void onStored(std::vector<Nodes::EventInfo> events);
    /// Leaves out those that were taken already.
    std::vector<Nodes::EventInfo> unseen(std::vector<Nodes::EventInfo> events);

    Utils::WatchedNode<Nodes::widgetEventList> m_node;
    const unsigned m_view;
    unsigned m_request = 0;
    bool m_isAsking = false;
    bool m_hasBegun = false;
    SeenEvents m_seen;
    std::vector<Nodes::EventInfo> m_early; // stored before the answer has begun
    Utils::QueueRelay<Page> m_pages;
    Utils::QueueRelay<Nodes::EventInfo> m_live;
    Nodes::ScopedConnection m_answers;
    Nodes::ScopedConnection m_stores;
};

} // namespace Widgets
