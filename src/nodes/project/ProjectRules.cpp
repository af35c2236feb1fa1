#include "nodes/project/ProjectRules.h"

#include "nodes/model/validation/FindingCode.h"
#include "nodes/project/AddressRule.h"
#include "nodes/project/WindowRule.h"

namespace Nodes {

const std::vector<ProjectRule> &ProjectRules()
{
    static const std::vector<ProjectRule> rules{
        {FindingCode::RepeatedDevice, true, &FindRepeatedDevices},
        {FindingCode::RepeatedAddress, true, &FindRepeatedAddresses},
        {FindingCode::NothingShown, true, &FindNothingShown},
        {FindingCode::UnreachableWindow, true, &FindUnreachableWindows},
    };
    return rules;
}

} // namespace Nodes
