#include "nodes/project/ValueWords.h"

#include "nodes/model/ConfigNode.h"

#include <algorithm>

namespace Nodes {

namespace {

std::string wordsOf(const NodeLink &link)
{
    if (link.isEmpty())
        return "не задано";
    const ConfigNode *node = link.GetNode();
    return node ? "«" + (node->GetPath().empty() ? node->GetName() : node->GetPath()) + "»"
                : "узел " + std::to_string(link.GetNodeId()) + ", которого нет";
}

std::string wordsOf(const NodeLinks &links)
{
    constexpr std::size_t shown = 5;
    std::string words;
    for (std::size_t i = 0; i < links.size() && i < shown; ++i)
        words += (i == 0 ? "" : ", ") + wordsOf(links[i]);
    if (links.size() > shown)
        words += " и ещё " + std::to_string(links.size() - shown);
    return links.empty() ? "не задано" : words;
}

std::string choiceWords(const PropertyDescriptor &d, const std::string &text)
{
    const auto found = std::find_if(d.choices.begin(), d.choices.end(),
                                    [&](const PropertyChoice &c) { return c.token == text; });
    return found == d.choices.end() ? text : "«" + found->nameRu + "»";
}

} // namespace

std::string QuotedWords(std::string_view text)
{
    constexpr std::size_t shown = 120;
    if (text.empty())
        return "пусто";
    std::string part(text.substr(0, shown));
    while (part.size() < text.size() && !part.empty() &&
           (static_cast<unsigned char>(text[part.size()]) & 0xC0) == 0x80)
        part.pop_back();
    std::replace(part.begin(), part.end(), '\n', ' ');
    return "«" + part + (part.size() < text.size() ? "…»" : "»");
}

std::string ValueWords(const PropertyDescriptor &d, const BasicNode &node)
{
    const std::string text = d.binding.format(d, node);
    switch (d.binding.type) {
    case PropertyType::Bool:
        return text == "true" ? "да" : "нет";
    case PropertyType::Link:
        return wordsOf(*static_cast<const NodeLink *>(d.binding.data(node)));
    case PropertyType::Links:
        return wordsOf(*static_cast<const NodeLinks *>(d.binding.data(node)));
    case PropertyType::Secret:
        return text.empty() ? "не задано" : "задано (не показывается)";
    case PropertyType::String:
    case PropertyType::Resource:
        return QuotedWords(text);
    default:
        return d.choices.empty() ? text : choiceWords(d, text);
    }
}

} // namespace Nodes
