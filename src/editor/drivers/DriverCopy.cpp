#include "editor/drivers/DriverCopy.h"

#include "nodes/drivers/BasicDriver.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

namespace Editor {

using Nodes::BasicDriver;
using Nodes::ConfigNode;
using Nodes::NodeType;
using Nodes::Result;

namespace {

/// What stands above it, as folders: formulas may call signals by their whole paths.
ConfigNode *makePlace(Nodes::NodesCollection &project, const ConfigNode *above)
{
    if (!above || !above->GetParent())
        return project.GetRoot();
    ConfigNode *parent = makePlace(project, above->GetParent());
    ConfigNode *place =
        parent ? project.CreateNode(NodeType(NodeType::SubtypeFolder), parent) : nullptr;
    if (place)
        place->SetName(above->GetName());
    return place;
}

} // namespace

DriverCopy::DriverCopy(const BasicDriver &driver)
    : m_project(std::make_unique<Nodes::NodesCollection>()), m_result(make(driver))
{
}

DriverCopy::~DriverCopy()
{
    if (m_driver)
        (void)m_driver->Stop();
}

Result DriverCopy::make(const BasicDriver &driver)
{
    const Nodes::KindInfo *root = Nodes::KindTable::Instance().FindByKey("project");
    ConfigNode *place = root && m_project->SetRoot(m_project->CreateDetached(*root))
                            ? makePlace(*m_project, driver.GetParent())
                            : nullptr;
    ConfigNode *made = place ? m_project->CreateNode(driver.GetNodeType(), place) : nullptr;
    m_driver = dynamic_cast<BasicDriver *>(made);
    if (!m_driver)
        return Result(Result::NotAvailable, "драйвер не удалось повторить");
    Result result = m_driver->DeserializeXML(driver.SerializeXML());
    if (result)
        result = m_driver->SetProperty(BasicDriver::Prop::Enabled, true);
    if (result)
        result = m_driver->Start();
    m_signals = m_driver->GetSignals();
    return result;
}

} // namespace Editor
