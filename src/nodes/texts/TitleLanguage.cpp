#include "nodes/model/ConfigNode.h"
#include "nodes/templates/TemplateBinding.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/texts/FieldTexts.h"

namespace Nodes {

namespace {

void addParameters(const ConfigNode &node, const std::string &prefix, std::vector<TextWord> &words)
{
    for (const auto &child : node.Children()) {
        if (!dynamic_cast<const templateParameter *>(child.get()))
            continue;
        const std::string name = prefix + child->GetName();
        words.push_back(
            {TextWord::Field, "{" + name + "}", "имя того, что задано параметром «" + name + "»"});
        addParameters(*child, name + "/", words);
    }
}

std::vector<TextWord> words(const ConfigNode *node)
{
    std::vector<TextWord> words;
    if (node)
        addParameters(*node, "", words);
    return words;
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *node)
{
    return FieldTexts::Check(text, "{", words(node));
}

TrialOutcome run(const std::string &text, const ConfigNode *node, const std::vector<TrialInput> &)
{
    if (!node)
        return {false, "шаблона нет"};
    const std::string filled = TemplateBinding(*node, {}).Fill(text);
    return {true, filled.empty() ? "имя экземпляра" : filled};
}

} // namespace

TextLanguage TitleLanguage()
{
    return {"title",
            "Заголовок окон, сделанных по шаблону: {параметр} заменяется именем того, что задано. "
            "Пустой: имя экземпляра.",
            TextLanguage::Braces,
            false,
            &words,
            &check,
            nullptr,
            &run};
}

} // namespace Nodes
