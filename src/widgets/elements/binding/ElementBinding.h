#pragma once

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/MetaTypes.h"
#include "utils/relay/NodeRelay.h"

#include <QObject>

namespace Widgets {

/// Ties an element to its node: what the node tells raises the element's Qt signals, which reach
/// the element's slots only while it is active. A member of the element. GUI thread.
class ElementBinding
{
public:
    /// A null node binds nothing.
    template <class Element> void bind(Element *element, Nodes::BasicWidget *node)
    {
        Utils::NodeRelay::Handlers handlers;
        handlers.propertyChanged = [element](Nodes::BasicProperty *property) {
            emit element->updateProperty(property);
        };
        handlers.valueChanged = [element, node] { emit element->valueUpdated(node->GetValue()); };
        m_relay.connect(node, std::move(handlers));
    }

    template <class Element> static void setConnected(Element *element, bool on)
    {
        if (!on) {
            QObject::disconnect(element, &Element::updateProperty, element,
                                &Element::onUpdateProperties);
            QObject::disconnect(element, &Element::valueUpdated, element, &Element::onValueUpdated);
            return;
        }
        QObject::connect(element, &Element::updateProperty, element, &Element::onUpdateProperties,
                         Qt::UniqueConnection);
        QObject::connect(element, &Element::valueUpdated, element, &Element::onValueUpdated,
                         Qt::UniqueConnection);
        element->onUpdateProperties(nullptr);
    }

private:
    Utils::NodeRelay m_relay;
};

} // namespace Widgets
