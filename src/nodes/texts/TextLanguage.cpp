#include "nodes/texts/TextLanguage.h"

#include "nodes/texts/FieldTexts.h"
#include "nodes/texts/LuaLanguages.h"

#include <algorithm>

namespace Nodes {

const std::vector<TextLanguage> &TextLanguages()
{
    static const std::vector<TextLanguage> languages{
        FormulaLanguage(),     ConditionLanguage(), ScriptLanguage(),
        FileNameLanguage(),    TitleLanguage(),     DefineLanguage(),
        DefineLinesLanguage(), NumberLanguage(),    TimeLanguage()};
    return languages;
}

const TextLanguage *FindTextLanguage(std::string_view hint)
{
    const auto &all = TextLanguages();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const TextLanguage &row) { return row.hint == hint; });
    return found == all.end() ? nullptr : &*found;
}

std::vector<TextProblem> FindTextProblems(std::string_view hint, const std::string &text,
                                          const ConfigNode *node)
{
    const TextLanguage *language = FindTextLanguage(hint);
    return language ? language->check(text, node) : std::vector<TextProblem>();
}

} // namespace Nodes
