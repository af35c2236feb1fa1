#pragma once

#include "support/RuntimeProject.h"

#include "nodes/visual/BasicWidget.h"

#include <QImage>

/// A project with one of its elements at work, in no window.
template <class Element> struct LiveElement : RuntimeProject
{
    LiveElement(const char *nodes, unsigned long id,
                Nodes::enWorkMode mode = Nodes::WorkModeRuntime)
        : RuntimeProject(nodes, mode), element(node<Nodes::BasicWidget>(id), nullptr)
    {
        element.start();
    }
    /// What it looks like once all that was published has arrived.
    QImage drawn()
    {
        QCoreApplication::processEvents();
        return element.grab().toImage();
    }

    Element element;
};
