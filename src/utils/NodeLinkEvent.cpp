#include "utils/NodeLinkEvent.h"

#include <QCoreApplication>

namespace Utils {

NodeLinkEvent::NodeLinkEvent(const Nodes::NodeLink &link, QObject *sender)
    : QEvent(eventType()), m_link(link), m_sender(sender)
{
}

QEvent::Type NodeLinkEvent::eventType()
{
    static const int type = QEvent::registerEventType();
    return static_cast<QEvent::Type>(type);
}

void NodeLinkEvent::SendEventToApp(const Nodes::NodeLink &link, QObject *sender)
{
    if (QCoreApplication *application = QCoreApplication::instance())
        QCoreApplication::postEvent(application, new NodeLinkEvent(link, sender));
}

} // namespace Utils
