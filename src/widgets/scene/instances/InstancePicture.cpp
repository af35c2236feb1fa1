#include "widgets/scene/instances/InstancePicture.h"

#include "widgets/elements/IWidget.h"
#include "widgets/elements/painting/DirectPainting.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicLayer.h"

#include <QWidget>

#include <algorithm>

namespace Widgets {

namespace {

template <class Node> std::vector<Nodes::ConfigNode *> visibleBelow(const Nodes::ConfigNode &parent)
{
    std::vector<Nodes::ConfigNode *> found;
    for (const auto &child : parent.Children()) {
        const auto *node = dynamic_cast<const Node *>(child.get());
        if (node && node->isVisible())
            found.push_back(child.get());
    }
    std::stable_sort(found.begin(), found.end(), [](const auto *a, const auto *b) {
        return dynamic_cast<const Node &>(*a).GetZOrder() <
               dynamic_cast<const Node &>(*b).GetZOrder();
    });
    return found;
}

} // namespace

InstancePicture::InstancePicture(const Nodes::ConfigNode &content, const SceneContextPtr &context)
    : m_content(&content)
{
    addElements(content, context);
    for (const Nodes::ConfigNode *layer : visibleBelow<Nodes::BasicLayer>(content))
        addElements(*layer, context);
}

void InstancePicture::addElements(const Nodes::ConfigNode &parent, const SceneContextPtr &context)
{
    for (Nodes::ConfigNode *node : visibleBelow<Nodes::BasicWidget>(parent)) {
        std::unique_ptr<QWidget> made(
            ElementFactory::create(dynamic_cast<Nodes::BasicWidget *>(node), nullptr, context));
        if (dynamic_cast<IWidget *>(made.get()))
            m_elements.push_back(std::move(made));
    }
}

InstancePicture::~InstancePicture()
{
    setActive(false);
}

// Without their nodes elements cannot be stopped any more, and need not.
void InstancePicture::setActive(bool on)
{
    if (!m_content.isValid())
        return;
    for (const auto &element : m_elements)
        dynamic_cast<IWidget &>(*element).setActive(on);
}

std::vector<QWidget *> InstancePicture::elements() const
{
    std::vector<QWidget *> all;
    for (const auto &element : m_elements)
        all.push_back(element.get());
    return all;
}

void InstancePicture::draw(QPainter &painter) const
{
    for (const auto &element : m_elements) {
        painter.save();
        painter.translate(element->pos());
        painter.setClipRect(element->rect(), Qt::IntersectClip);
        if (auto *direct = dynamic_cast<DirectPainting *>(element.get()))
            direct->paintDirectly(painter);
        else
            element->render(&painter, QPoint(), QRegion(),
                            QWidget::DrawWindowBackground | QWidget::DrawChildren);
        painter.restore();
    }
}

} // namespace Widgets
