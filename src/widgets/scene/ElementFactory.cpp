#include "widgets/scene/ElementFactory.h"

#include "widgets/elements/qwidgetBargraph.h"
#include "widgets/elements/qwidgetButton.h"
#include "widgets/elements/qwidgetCheckBox.h"
#include "widgets/elements/qwidgetComboBox.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/elements/qwidgetImage.h"
#include "widgets/elements/qwidgetLabel.h"
#include "widgets/elements/qwidgetMovingImage.h"
#include "widgets/elements/qwidgetMultiImage.h"
#include "widgets/elements/qwidgetMultiLabel.h"
#include "widgets/elements/qwidgetRecorderDigitalDisplay.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "nodes/visual/elements/widgetCheckBox.h"
#include "nodes/visual/elements/widgetComboBox.h"
#include "nodes/visual/elements/widgetEditBox.h"
#include "nodes/visual/elements/widgetMovingImage.h"
#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"

#include <map>

namespace Widgets {

namespace {

using Creator = QWidget *(*)(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                             const SceneContextPtr &context);

template <class Node, class Element>
QWidget *make(Nodes::BasicWidget *node, QGraphicsProxyWidget *, const SceneContextPtr &context)
{
    auto *typed = dynamic_cast<Node *>(node);
    return typed ? new Element(typed, nullptr, context) : nullptr;
}

/// For elements that keep the item they live in.
template <class Node, class Element>
QWidget *makeHosted(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                    const SceneContextPtr &context)
{
    auto *typed = dynamic_cast<Node *>(node);
    if (!typed)
        return nullptr;
    auto *element = new Element(typed, nullptr, context);
    element->setProxy(host);
    return element;
}

const std::map<unsigned, Creator> &table()
{
    static const std::map<unsigned, Creator> creators{
        {0x15001, &make<Nodes::BasicWidget, qwidgetLabel>},
        {0x15002, &make<Nodes::BasicWidget, qwidgetImage>},
        {0x15003, &make<Nodes::BasicWidget, qwidgetButton>},
        {0x15005, &make<Nodes::widgetRecorderDigitalDisplay, qwidgetRecorderDigitalDisplay>},
        {0x15006, &make<Nodes::widgetBargraph, qwidgetBargraph>},
        {0x15008, &make<Nodes::BasicWidget, qwidgetMultiLabel>},
        {0x15009, &make<Nodes::BasicWidget, qwidgetMultiImage>},
        {0x1500A, &make<Nodes::widgetMovingImage, qwidgetMovingImage>},
        {0x1500B, &make<Nodes::widgetEditBox, qwidgetEditBox>},
        {0x1500E, &makeHosted<Nodes::widgetComboBox, qwidgetComboBox>},
        {0x1500F, &make<Nodes::widgetCheckBox, qwidgetCheckBox>},
    };
    return creators;
}

} // namespace

QWidget *ElementFactory::create(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                                const SceneContextPtr &context)
{
    if (!node)
        return nullptr;
    const auto found = table().find(node->GetNodeType().GetCode());
    return found == table().end() ? nullptr : found->second(node, host, context);
}

std::vector<unsigned> ElementFactory::codes()
{
    std::vector<unsigned> codes;
    for (const auto &[code, creator] : table())
        codes.push_back(code);
    return codes;
}

} // namespace Widgets
