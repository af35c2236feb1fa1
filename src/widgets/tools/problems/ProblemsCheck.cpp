#include "widgets/tools/problems/ProblemsCheck.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/system/systemCore.h"

#include <QElapsedTimer>

namespace Widgets {

namespace {

constexpr int sliceLength = 8; // ms, half a frame

} // namespace

ProblemsCheck::ProblemsCheck(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &ProblemsCheck::work);
}

void ProblemsCheck::start(const Nodes::systemCore *core)
{
    m_nodes.clear();
    m_next = 0;
    const Nodes::NodesCollection *project = core ? core->GetNodesCollection() : nullptr;
    const Nodes::ConfigNode *root = project ? project->GetRoot() : nullptr;
    std::vector<Problem> problems;
    if (core) {
        for (const Nodes::LoadMessage &message : core->GetLoadReport().GetMessages())
            problems.push_back(Problem::of(message));
    }
    if (root) {
        m_nodes = root->GetNodes(true);
        m_nodes.insert(m_nodes.begin(), root->GetNodeLink());
    }
    if (!problems.empty())
        emit found(problems);
    m_timer.start(0);
}

void ProblemsCheck::work()
{
    QElapsedTimer elapsed;
    elapsed.start();
    Nodes::ValidationResults results;
    for (; m_next < m_nodes.size() && elapsed.elapsed() < sliceLength; ++m_next) {
        if (const Nodes::ConfigNode *node = m_nodes[m_next].GetNode())
            node->Validate(results);
    }
    std::vector<Problem> problems;
    for (const Nodes::ValidationMessage &message : results)
        problems.push_back(Problem::of(message));
    if (!problems.empty())
        emit found(problems);
    emit progressed(int(m_next), int(m_nodes.size()));
    if (m_next < m_nodes.size())
        return;
    m_timer.stop();
    emit finished();
}

} // namespace Widgets
