#include "nodes/actions/BasicTemplateAction.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/templates/TemplateUse.h"

namespace Nodes {

void BasicTemplateAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicOpeningAction>().Children({NodeType::TypeArgument});
}

void BasicTemplateAction::Validate(ValidationResults &results) const
{
    BasicOpeningAction::Validate(results);
    if (const ConfigNode *source = GetTemplate())
        TemplateUse::Validate(*this, *source, results);
}

} // namespace Nodes
