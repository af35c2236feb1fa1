#include "nodes/actions/BasicTemplateAction.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/templates/TemplateBinding.h"

namespace Nodes {

void BasicTemplateAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicOpeningAction>().Children({NodeType::TypeArgument});
}

void BasicTemplateAction::Validate(ValidationResults &results) const
{
    BasicOpeningAction::Validate(results);
    const ConfigNode *source = GetTemplate();
    if (!source)
        return;
    const TemplateBinding binding(*source, GetArguments());
    const auto add = [&](Result::ResultType type, const std::string &text) {
        results.Add(GetNodeLink(), Result(this, type), GetPath() + ": " + text);
    };
    for (const std::string &name : binding.GetMissing())
        add(Result::NotFound, "параметр «" + name + "» шаблона «" + source->GetPath() +
                                  "» ничему не соответствует. Задайте аргумент с этим именем.");
    for (const std::string &name : binding.GetUnused())
        add(Result::InvalidArgument, "у шаблона «" + source->GetPath() + "» нет параметра «" +
                                         name + "». Переименуйте или удалите аргумент.");
}

} // namespace Nodes
