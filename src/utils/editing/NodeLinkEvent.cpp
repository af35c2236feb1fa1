#include "utils/editing/NodeLinkEvent.h"

#include <QCoreApplication>

namespace Utils {

NodeLinkEvent::NodeLinkEvent(const Nodes::NodeLink &link, QObject *sender)
    : NodeLinkEvent(link.isEmpty() ? Nodes::NodeLinks() : Nodes::NodeLinks{link}, sender)
{
}

NodeLinkEvent::NodeLinkEvent(Nodes::NodeLinks links, QObject *sender)
    : QEvent(eventType()), m_links(std::move(links)), m_sender(sender)
{
}

QEvent::Type NodeLinkEvent::eventType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

void NodeLinkEvent::SendEventToApp(const Nodes::NodeLink &link, QObject *sender)
{
    SendEventToApp(link.isEmpty() ? Nodes::NodeLinks() : Nodes::NodeLinks{link}, sender);
}

void NodeLinkEvent::SendEventToApp(const Nodes::NodeLinks &links, QObject *sender)
{
    if (QCoreApplication *application = QCoreApplication::instance())
        QCoreApplication::postEvent(application, new NodeLinkEvent(links, sender));
}

} // namespace Utils
