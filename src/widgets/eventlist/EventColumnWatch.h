#pragma once

#include "utils/relay/NodeRelay.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

/// Tells when the columns that an event list has in the project become others: added, removed,
/// moved or changed. GUI thread.
class EventColumnWatch : public QObject
{
    Q_OBJECT

public:
    /// The node outlives this, or ends its relays before.
    explicit EventColumnWatch(Nodes::widgetEventList *list, QObject *parent = nullptr);
    ~EventColumnWatch() override;

signals:
    /// Once for changes that come together, after them.
    void changed();

private:
    void watch(const Nodes::NodeLink &column);

    Utils::NodeRelay m_list;
    std::map<unsigned long, std::unique_ptr<Utils::NodeRelay>> m_columns; // by node
    QTimer m_telling;
};

} // namespace Widgets
