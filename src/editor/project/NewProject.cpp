#include "editor/project/NewProject.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/values/Uuid.h"

namespace Editor {

namespace {

constexpr const char *text = R"(<?xml version="1.0" encoding="UTF-8"?>
<project id="1" name="Новый проект" format="1" lastId="10">
  <station id="2" name="Станция оператора">
    <visualization id="3" name="Визуализация"/>
    <alarming id="4" name="Тревоги"/>
    <archiver id="5" name="Архив"/>
    <folder id="6" name="Сигналы"/>
    <folder id="7" name="Экраны"/>
  </station>
</project>)";

} // namespace

std::unique_ptr<Nodes::NodesCollection> MakeNewProject(const std::string &name)
{
    std::unique_ptr<Nodes::NodesCollection> project;
    Nodes::ProjectReader reader;
    const Nodes::Result read = reader.ReadBuffer(text, "new project", project);
    if (!read)
        return std::make_unique<Nodes::NodesCollection>();
    project->SetUuid(Nodes::RandomUuid());
    if (!name.empty())
        project->GetRoot()->SetName(name);
    return project;
}

} // namespace Editor
