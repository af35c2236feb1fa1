// Any bytes as a project file: no crash, and what was read survives saving and reading again.
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::unique_ptr<Nodes::NodesCollection> read(const std::string &bytes)
{
    Nodes::LoadLimits limits;
    limits.nodes = 20000;
    limits.attributes = 100000;
    Nodes::ProjectReader reader;
    reader.SetLimits(limits);
    std::unique_ptr<Nodes::NodesCollection> project;
    const Nodes::Result result = reader.ReadBuffer(bytes, "input", project);
    const bool isReported = reader.GetReport().GetCount(Nodes::LoadMessage::Fatal) == 1;
    if (result.IsSuccess() != (project != nullptr) || result.IsSuccess() == isReported)
        std::abort();
    return project;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const auto project = read(std::string(reinterpret_cast<const char *>(data), size));
    if (!project)
        return 0;
    for (const Nodes::NodeLink &link : project->GetRoot()->GetNodes(true))
        (void)link->isValid();
    const std::string saved = Nodes::ProjectWriter::ToText(*project);
    const auto again = read(saved);
    if (!again || again->GetNodeCount() != project->GetNodeCount()) {
        std::fprintf(stderr, "does not read back:\n%s\n", saved.c_str());
        std::abort();
    }
    // The first save brings what was read into order; from then on nothing may change.
    const std::string ordered = Nodes::ProjectWriter::ToText(*again);
    const auto third = read(ordered);
    if (!third || ordered != Nodes::ProjectWriter::ToText(*third)) {
        std::fprintf(stderr, "changed:\n%s\n", ordered.c_str());
        std::abort();
    }
    return 0;
}
