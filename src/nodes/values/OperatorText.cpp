#include "nodes/values/OperatorText.h"

#include "nodes/values/Result.h"

namespace Nodes {

std::string OperatorText(const Result &result)
{
    const std::string &detail = result.GetDetail();
    return result.GetResultTranslated() + (detail.empty() ? detail : " (" + detail + ")");
}

} // namespace Nodes
