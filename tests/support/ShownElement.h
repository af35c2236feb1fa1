#pragma once

#include "support/RuntimeProject.h"

#include "widgets/elements/IWidget.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/visual/BasicWidget.h"

/// An element of a project, active in a window of its own that is on the screen.
template <class Element> class ShownElement
{
public:
    ShownElement(const RuntimeProject &project, unsigned long id)
    {
        auto *node = project.node<Nodes::BasicWidget>(id);
        m_widget.reset(Widgets::ElementFactory::create(node, nullptr));
        element = dynamic_cast<Element *>(m_widget.get());
        if (!element)
            qFatal("node %lu has another element", id);
        m_widget->setParent(&window);
        window.resize(600, 400);
        element->start();
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the window does not show");
    }
    ~ShownElement() { element->stop(); }

    Element *operator->() const { return element; }

    QWidget window;
    Element *element = nullptr;

private:
    std::unique_ptr<QWidget> m_widget; // gone before the window
};
