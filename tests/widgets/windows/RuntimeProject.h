#pragma once

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/system/systemCore.h"
#include "widgets/windows/WindowManager.h"

#include <memory>
#include <string>

/// A project in the operator runtime, with its window manager, built from the text of a file.
class RuntimeProject
{
public:
    explicit RuntimeProject(const std::string &contents)
    {
        Nodes::ProjectReader reader;
        std::unique_ptr<Nodes::NodesCollection> project;
        const std::string text =
            "<project format=\"1\" id=\"1\" name=\"P\">" + contents + "</project>";
        m_isValid =
            bool(reader.ReadBuffer(text, "test.xml", project)) && reader.GetReport().empty();
        if (!m_isValid)
            return;
        core.SetWorkMode(Nodes::WorkModeRuntime);
        core.AdoptProject(std::move(project), "test.xml");
        manager = std::make_unique<Widgets::WindowManager>(&core);
    }

    bool isValid() const { return m_isValid; }
    template <class Kind> Kind *node(unsigned long id) const
    {
        return dynamic_cast<Kind *>(core.GetNodesCollection()->FindNode(id));
    }

    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;

private:
    bool m_isValid = false;
};
