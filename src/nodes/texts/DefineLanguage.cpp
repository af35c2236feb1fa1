#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/texts/FieldTexts.h"

#include <set>

namespace Nodes {

namespace {

const std::string open = "${";

bool isOfDefines(const PropertyDescriptor &d)
{
    const TextLanguage *language = FindTextLanguage(d.editorHint);
    return language && (language->hint == std::string_view("defines") ||
                        language->hint == std::string_view("defineLines"));
}

void collect(const ConfigNode &node, std::set<std::string> &names)
{
    for (const PropertyDescriptor &d :
         node.GetKind() ? node.GetKind()->properties : std::vector<PropertyDescriptor>()) {
        if (!isOfDefines(d))
            continue;
        for (const auto &field : FieldTexts::Find(d.binding.format(d, node), open)) {
            if (field.isClosed && !field.name.empty())
                names.insert(field.name);
        }
    }
    for (const auto &child : node.Children())
        collect(*child, names);
}

// What the project names elsewhere: the project itself does not say what a station is started with.
std::vector<TextWord> words(const ConfigNode *node)
{
    std::set<std::string> names;
    const NodesCollection *project = node ? node->GetNodesCollection() : nullptr;
    if (project && project->GetRoot())
        collect(*project->GetRoot(), names);
    std::vector<TextWord> words;
    for (const std::string &name : names)
        words.push_back({TextWord::Field, open + name + "}",
                         "задаётся при запуске станции: --define " + name + "=ЗНАЧЕНИЕ"});
    return words;
}

std::vector<TextProblem> check(const std::string &text, const ConfigNode *)
{
    std::vector<TextProblem> problems;
    for (const auto &field : FieldTexts::Find(text, open)) {
        if (!field.isClosed || field.name.empty())
            problems.push_back({field.begin, field.length,
                                field.isClosed ? "между { и } нужно имя"
                                               : "скобка { не закрыта, текст останется как есть",
                                !field.isClosed});
    }
    return problems;
}

TextLanguage language(const char *hint, bool isMultiLine)
{
    return {
        hint,
        "Текст; ${имя} заменяется тем, с чем запущена станция (--define имя=значение): так один "
        "проект годится для нескольких машин.",
        TextLanguage::Braces,
        isMultiLine,
        &words,
        &check,
        nullptr,
        nullptr};
}

} // namespace

TextLanguage DefineLanguage()
{
    return language("defines", false);
}

TextLanguage DefineLinesLanguage()
{
    return language("defineLines", true);
}

} // namespace Nodes
