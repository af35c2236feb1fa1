#include "widgets/eventlist/EventColumnWatch.h"

#include "nodes/visual/events/eventColumn.h"
#include "nodes/visual/events/widgetEventList.h"

namespace Widgets {

EventColumnWatch::EventColumnWatch(Nodes::widgetEventList *list, QObject *parent) : QObject(parent)
{
    m_telling.setSingleShot(true);
    connect(&m_telling, &QTimer::timeout, this, &EventColumnWatch::changed);
    if (!list)
        return;
    for (const auto &child : list->Children())
        watch(Nodes::NodeLink(child.get()));
    Utils::NodeRelay::Handlers handlers;
    handlers.childAdded = [this](const Nodes::NodeLink &child) {
        watch(child);
        m_telling.start(0);
    };
    handlers.childRemoved = [this](const Nodes::NodeLink &child) {
        m_columns.erase(child.GetNodeId());
        m_telling.start(0);
    };
    handlers.childMoved = [this] { m_telling.start(0); };
    m_list.connect(list, std::move(handlers));
}

EventColumnWatch::~EventColumnWatch() = default;

void EventColumnWatch::watch(const Nodes::NodeLink &column)
{
    auto *node = dynamic_cast<Nodes::eventColumn *>(column.GetNode());
    if (!node)
        return;
    auto relay = std::make_unique<Utils::NodeRelay>();
    Utils::NodeRelay::Handlers handlers;
    handlers.propertyChanged = [this](Nodes::BasicProperty *) { m_telling.start(0); };
    relay->connect(node, std::move(handlers));
    m_columns[column.GetNodeId()] = std::move(relay);
}

} // namespace Widgets
