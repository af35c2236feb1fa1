// Any bytes as packed nodes: no crash, and what was read can be saved, read and packed again.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/NodesContainer.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::unique_ptr<Nodes::NodesCollection> emptyProject()
{
    auto project = std::make_unique<Nodes::NodesCollection>();
    const Nodes::KindInfo *kind = Nodes::KindTable::Instance().FindByKey("project");
    if (!project->SetRoot(project->CreateDetached(*kind)))
        std::abort();
    return project;
}

void checkSaved(const Nodes::NodesCollection &project)
{
    const std::string saved = Nodes::ProjectWriter::ToText(project);
    std::unique_ptr<Nodes::NodesCollection> again;
    Nodes::ProjectReader reader;
    const Nodes::Result result = reader.ReadBuffer(saved, "saved", again);
    if (result && again->GetNodeCount() == project.GetNodeCount())
        return;
    std::fprintf(stderr, "%s\n%s\n", result.ToString().c_str(), saved.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto project = emptyProject();
    Nodes::NodesContainer nodes;
    const std::string_view bytes(reinterpret_cast<const char *>(data), size);
    if (!project->Deserialize(bytes, nodes)) {
        if (!nodes.empty())
            std::abort();
        return 0;
    }
    Nodes::NodesContainer copies;
    if (!project->Deserialize(project->Serialize(nodes), copies) || copies.size() != nodes.size())
        std::abort();
    for (const Nodes::NodeLink &copy : copies)
        project->TakeClone(copy);
    for (const Nodes::NodeLink &clone : nodes) {
        std::unique_ptr<Nodes::ConfigNode> node = project->TakeClone(clone);
        (void)project->GetRoot()->AdoptNode(node);
    }
    checkSaved(*project);
    return 0;
}
