#pragma once

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/ProjectFixture.h"

#include <QUndoStack>
#include <QWidget>

/// The names of the node and of all below it, a line each, indented by dots.
inline QStringList namesOf(const Nodes::ConfigNode &node, int depth = 0)
{
    QStringList names{QString(depth, QLatin1Char('.')) + QString::fromStdString(node.GetName())};
    for (const auto &child : node.Children())
        names << namesOf(*child, depth + 1);
    return names;
}

/// A project in memory, open in a workspace: two boilers with signals, and a window that shows
/// those of the first.
struct OpenProject : ProjectFixture
{
    OpenProject()
    {
        root()->SetName("project");
        for (const char *name : {"К1", "К2"}) {
            Nodes::ConfigNode *boiler = add("folder", root(), name);
            for (const char *signal : {"T", "P", "Q"})
                add("memorySignal", boiler, signal);
        }
        (void)at("К2")->RemoveNode(at("К2/Q")); // the second boiler has one signal less
        layer = addLayer();
        for (const char *name : {"a", "b", "c"})
            add("label", layer, name, {{"signal", idOf(at("К1/T"))}});
        set(at("Композиция/Слой/c"), {{"signal", idOf(at("К1/Q"))}});
        QObject::connect(&workspace, &Editor::Workspace::told, &window,
                         [this](Editor::Workspace::Level, const QString &text) { told << text; });
        session.adopt(std::move(owned), {}, {});
    }
    ~OpenProject() { session.close(); }

    /// Null when there is no such node.
    Nodes::ConfigNode *at(const char *path) const
    {
        const auto nodes = project.GetNodesByPath(path);
        return nodes.empty() ? nullptr : nodes.front();
    }
    Nodes::NodeLinks links(std::initializer_list<const char *> paths) const
    {
        Nodes::NodeLinks found;
        for (const char *path : paths)
            found.emplace_back(at(path));
        return found;
    }
    QStringList names() const { return namesOf(*root()); }
    /// Path of the signal that the label shows; "" without one.
    std::string signalOf(const char *label) const
    {
        const auto id = std::stoul("0" + textOf(*at(label), "signal"));
        return Nodes::NodeLink(id).GetLinkName(true);
    }
    std::string text() const { return root()->SerializeXML(); }

    QWidget window;
    Editor::ProjectSession session;
    Editor::Workspace workspace{session, window};
    QStringList told;
    Nodes::ConfigNode *layer = nullptr;
};
