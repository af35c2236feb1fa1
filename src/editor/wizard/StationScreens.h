#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QSize>
#include <QString>

namespace Nodes {
class NodesCollection;
}

class QUndoCommand;

namespace Editor {

class NodeRecipe;

/// The screens that stations have in common: a frame of header, field and buttons, and the pages
/// the buttons bring into that field. The project outlives the object. GUI thread.
class StationScreens
{
public:
    explicit StationScreens(Nodes::NodesCollection &project) : m_project(project) {}

    /// The composed window of a frame that pages are added to; leads nowhere while there is none.
    Nodes::NodeLink field() const;
    /// Some frame has that display (from 1).
    bool hasFrame(int display) const;

    /// One step that adds the frame of that display and its pages: overview, trends of what is
    /// archived, alarms, events, reports. The header tells who is logged in where the project has
    /// users. `overview` becomes the first page once the command is done.
    QUndoCommand *build(const QString &title, const QSize &size, int display,
                        Nodes::NodeLink &overview) const;
    /// One step that adds an empty page with its button, numbered where one has that name; where
    /// the row of buttons is full they all become narrower. Null without a field.
    QUndoCommand *addPage(const QString &name, Nodes::NodeLink &made) const;

private:
    struct Row;

    Nodes::NodeLink page(const QString &name, const QSize &size, const NodeRecipe *content) const;
    Nodes::NodeLink header(const QString &title, const QSize &size, const Nodes::NodeLink &folder,
                           QUndoCommand *group) const;
    /// The signal of who is logged in, added unless the project has it.
    Nodes::NodeLink userShown(QUndoCommand *group) const;
    void addButton(const Row &line, const QString &name, const Nodes::NodeLink &show,
                   QUndoCommand *group) const;
    Row row(const Nodes::NodeLink &field) const;

    Nodes::NodesCollection &m_project;
};

} // namespace Editor
