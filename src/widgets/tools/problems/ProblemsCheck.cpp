#include "widgets/tools/problems/ProblemsCheck.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectCheck.h"
#include "nodes/system/systemCore.h"

namespace Widgets {

namespace {

constexpr std::chrono::milliseconds sliceLength(8); // half a frame

} // namespace

ProblemsCheck::ProblemsCheck(QObject *parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &ProblemsCheck::work);
}

ProblemsCheck::~ProblemsCheck() = default;

void ProblemsCheck::start(const Nodes::systemCore *core)
{
    const Nodes::NodesCollection *project = core ? core->GetNodesCollection() : nullptr;
    m_project = project ? project->GetToken() : 0;
    m_told = 0;
    m_check = project ? std::make_unique<Nodes::ProjectCheck>(*project) : nullptr;
    if (m_check)
        m_check->AddReading(core->GetLoadReport());
    m_timer.start(0);
}

bool ProblemsCheck::isProjectThere() const
{
    return m_check && Nodes::NodesCollection::FromToken(m_project);
}

void ProblemsCheck::work()
{
    if (!isProjectThere()) {
        m_timer.stop();
        m_check.reset();
        emit finished();
        return;
    }
    const bool goesOn = m_check->Work(sliceLength);
    const auto &all = m_check->GetProblems();
    std::vector<Problem> problems;
    for (; m_told < all.size(); ++m_told)
        problems.push_back(Problem::of(all[m_told], Nodes::NodesCollection::FromToken(m_project)));
    const int done = int(m_check->GetDone());
    const int count = int(m_check->GetCount());
    if (!goesOn)
        m_timer.stop();
    if (!problems.empty())
        emit found(problems);
    emit progressed(done, count);
    if (!goesOn)
        emit finished();
}

} // namespace Widgets
