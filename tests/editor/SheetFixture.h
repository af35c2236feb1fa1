#pragma once

#include "editor/project/ProjectSession.h"
#include "editor/signals/SheetEdits.h"
#include "editor/signals/SheetModel.h"
#include "editor/workspace/Workspace.h"

#include "nodes/archive/systemArchiver.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QTemporaryDir>
#include <QWidget>

#include <memory>

/// A new project with a device whose group has three signals.
struct SheetFixture
{
    SheetFixture()
    {
        if (!session.create(directory.filePath("p"), "П"))
            qFatal("no project");
        device = add(Nodes::modbusDriver::Code, session.root()->GetNodeAt(0), "ПЛК");
        group = add(Nodes::modbusGroup::Code, device, "Г1");
        set(group, "count", "100");
        set(group, "start", "1000");
        for (const char *name : {"Т01", "Т02", "Т03"})
            signalNodes.emplace_back(add(Nodes::modbusSignal::Code, group, name));
        model = std::make_unique<Editor::SheetModel>(workspace, group, Nodes::NodeType::TypeSignal);
    }
    Nodes::ConfigNode *add(Nodes::NodeType::enNodeSubtype code, Nodes::ConfigNode *parent,
                           const char *name)
    {
        Nodes::ConfigNode *node = session.project()->CreateNode(Nodes::NodeType(code), parent);
        if (!node)
            qFatal("not created: %s", name);
        node->SetName(name);
        return node;
    }
    static void set(Nodes::ConfigNode *node, const char *key, const char *text)
    {
        if (!node->SetPropertyText(key, text))
            qFatal("%s", key);
    }
    Nodes::ConfigNode *archiver() const
    {
        Nodes::NodeLinks found;
        session.project()->FindNodes(Nodes::NodeType(Nodes::systemArchiver::Code), &found);
        return found.front().GetNode();
    }
    std::string text() const { return session.root()->SerializeXML(); }
    QString cell(int row, const char *column) const
    {
        return model->text(row, model->columns().Find(column));
    }
    Editor::SheetEdits::Refusals paste(const QString &text, int row = 0,
                                       const char *column = "offset",
                                       const Editor::SheetEdits::Cells &selected = {})
    {
        return Editor::SheetEdits::paste(workspace, *model, text.toStdString(), row,
                                         model->columns().Find(column), selected);
    }

    QTemporaryDir directory;
    QWidget window;
    Editor::ProjectSession session;
    Editor::Workspace workspace{session, window};
    Nodes::ConfigNode *device;
    Nodes::ConfigNode *group;
    Nodes::NodeLinks signalNodes;
    std::unique_ptr<Editor::SheetModel> model;
};
