#include "nodes/project/signals/CellText.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyText.h"
#include "nodes/project/signals/NodePaths.h"
#include "nodes/values/FoldCase.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <cmath>

namespace Nodes::CellText {

namespace {

constexpr const char *listSeparator = "; ";

template <class Value> const Value &valueOf(const PropertyDescriptor &d, const BasicNode &node)
{
    return *static_cast<const Value *>(d.binding.data(node));
}

template <class Value>
bool isHeld(const PropertyDescriptor &d, const BasicNode &node, const boost::any &value)
{
    const auto *wanted = boost::any_cast<Value>(&value);
    return wanted && *wanted == valueOf<Value>(d, node);
}

std::string nameOf(const NodeLink &link)
{
    return link.isEmpty() ? std::string() : link.GetLinkName(true);
}

std::string pathsOf(const NodeLinks &links)
{
    std::string text;
    for (const NodeLink &link : links)
        text += (text.empty() ? "" : listSeparator) + nameOf(link);
    return text;
}

std::string choiceName(const PropertyDescriptor &d, int code)
{
    for (const PropertyChoice &choice : d.choices) {
        if (choice.code == code)
            return choice.nameRu;
    }
    return std::to_string(code);
}

std::string withComma(std::string text)
{
    std::replace(text.begin(), text.end(), '.', ',');
    return text;
}

/// Without a power of ten where the number is whole: 600000, not 6e+05.
std::string limitText(double limit)
{
    constexpr double exact = 1e15;
    return limit == std::floor(limit) && std::abs(limit) < exact
               ? std::to_string(static_cast<long long>(limit))
               : withComma(FormatDouble(limit));
}

std::string trimmed(std::string_view text)
{
    constexpr const char *blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) + 1 - first));
}

/// A number without what people put in for the eye, its decimals behind a point.
std::string plainNumber(std::string text)
{
    for (const std::string_view blank :
         {std::string_view(" "), std::string_view("\xC2\xA0"), std::string_view("\xE2\x80\xAF")}) {
        for (std::size_t at = text.find(blank); at != std::string::npos; at = text.find(blank, at))
            text.erase(at, blank.size());
    }
    const bool isSure =
        std::count(text.begin(), text.end(), ',') == 1 && text.find('.') == std::string::npos;
    if (isSure)
        text[text.find(',')] = '.';
    return text;
}

/// What an empty cell stands for: a limit that a fresh node has not got.
std::string noNumber(const PropertyDescriptor &d)
{
    const auto fresh = ParseDouble(d.defaultText);
    return fresh && !std::isfinite(*fresh) ? d.defaultText : std::string();
}

Result refuse(const PropertyDescriptor &d, std::string_view text)
{
    const std::string admissible = Admissible(d);
    return Result(Result::InvalidArgument,
                  "«" + std::string(text) + "» не подходит для «" + d.nameRu + "»" +
                      (admissible.empty() ? "" : "; допустимо: " + admissible));
}

template <class Value>
Result parse(const PropertyDescriptor &d, const std::string &text, const NodePaths &paths,
             std::string_view written, boost::any &value)
{
    Value parsed{};
    if (!ParseProperty(d, text, paths.GetProject(), parsed))
        return refuse(d, written);
    value = parsed;
    return Result();
}

Result readBool(const PropertyDescriptor &d, const std::string &text, boost::any &value)
{
    const std::string folded = FoldCase(text);
    for (const char *yes : {"да", "1", "true", "истина", "yes", "+"}) {
        if (folded == yes) {
            value = true;
            return Result();
        }
    }
    for (const char *no : {"нет", "0", "false", "ложь", "no", "-", ""}) {
        if (folded == no) {
            value = false;
            return Result();
        }
    }
    return refuse(d, text);
}

Result readInt(const PropertyDescriptor &d, const std::string &text, const NodePaths &paths,
               boost::any &value)
{
    const std::string folded = FoldCase(text);
    for (const PropertyChoice &choice : d.choices) {
        if (FoldCase(choice.nameRu) == folded || FoldCase(choice.token) == folded) {
            value = choice.code;
            return Result();
        }
    }
    return parse<int>(d, d.choices.empty() ? plainNumber(text) : text, paths, text, value);
}

Result readLink(const PropertyDescriptor &d, const std::string &text, const NodePaths &paths,
                NodeLink &link)
{
    if (text.empty())
        return Result();
    ConfigNode *node = paths.Find(text);
    if (!node)
        return Result(Result::NotFound, "узла «" + text +
                                            "» нет в проекте или таких несколько; напишите полный "
                                            "путь, например «Станция/Котёл/Т01»");
    const auto family = node->GetNodeType().GetFamily();
    if (!d.linkFamilies.empty() && std::find(d.linkFamilies.begin(), d.linkFamilies.end(),
                                             unsigned(family)) == d.linkFamilies.end())
        return Result(Result::WrongType, "«" + text + "» — " +
                                             node->GetNodeType().GetSubtypeNameTranslated() +
                                             ", сюда не подходит");
    link = NodeLink(node);
    return Result();
}

Result readLinks(const PropertyDescriptor &d, const std::string &text, const NodePaths &paths,
                 NodeLinks &links)
{
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(';', at), text.size());
        NodeLink link;
        const Result read = readLink(d, trimmed(text.substr(at, end - at)), paths, link);
        if (!read)
            return read;
        if (!link.isEmpty())
            links.push_back(link);
        at = end + 1;
    }
    return Result();
}

} // namespace

std::string Show(const PropertyDescriptor &d, const BasicNode &node)
{
    switch (d.binding.type) {
    case PropertyType::Bool:
        return valueOf<bool>(d, node) ? "да" : "нет";
    case PropertyType::Int:
        return choiceName(d, valueOf<int>(d, node));
    case PropertyType::Double:
        return std::isfinite(valueOf<double>(d, node)) ? withComma(d.binding.format(d, node)) : "";
    case PropertyType::Link:
        return nameOf(valueOf<NodeLink>(d, node));
    case PropertyType::Links:
        return pathsOf(valueOf<NodeLinks>(d, node));
    case PropertyType::Secret:
        return {};
    default:
        return d.binding.format(d, node);
    }
}

Result Read(const PropertyDescriptor &d, std::string_view written, const NodePaths &paths,
            boost::any &value)
{
    const std::string text = trimmed(written);
    NodeLinks links(d.binding.type == PropertyType::Link ? 1 : 0);
    Result result;
    switch (d.binding.type) {
    case PropertyType::Bool:
        return readBool(d, text, value);
    case PropertyType::Int:
        return readInt(d, text, paths, value);
    case PropertyType::UInt:
        return parse<unsigned>(d, plainNumber(text), paths, text, value);
    case PropertyType::Double:
        return parse<double>(d, text.empty() ? noNumber(d) : plainNumber(text), paths, text, value);
    case PropertyType::String:
        value = std::string(written);
        return result;
    case PropertyType::Color:
        return parse<NColor>(d, text, paths, text, value);
    case PropertyType::Resource:
        return parse<ResourceLink>(d, text, paths, text, value);
    case PropertyType::Link:
        result = readLink(d, text, paths, links[0]);
        if (result)
            value = links[0];
        return result;
    case PropertyType::Links:
        result = readLinks(d, text, paths, links);
        if (result)
            value = links;
        return result;
    case PropertyType::Secret:
        break;
    }
    return Result(Result::AccessDenied, "«" + d.nameRu + "» не задаётся в таблице");
}

bool Holds(const PropertyDescriptor &d, const BasicNode &node, const boost::any &value)
{
    switch (d.binding.type) {
    case PropertyType::Bool:
        return isHeld<bool>(d, node, value);
    case PropertyType::Int:
        return isHeld<int>(d, node, value);
    case PropertyType::UInt:
        return isHeld<unsigned>(d, node, value);
    case PropertyType::Double:
        return isHeld<double>(d, node, value);
    case PropertyType::String:
        return isHeld<std::string>(d, node, value);
    case PropertyType::Link:
        return isHeld<NodeLink>(d, node, value);
    case PropertyType::Links:
        return isHeld<NodeLinks>(d, node, value);
    default:
        return false;
    }
}

std::string Admissible(const PropertyDescriptor &d)
{
    std::string text;
    if (d.binding.type == PropertyType::Bool)
        return "да, нет";
    for (const PropertyChoice &choice : d.choices)
        text += (text.empty() ? "" : ", ") + choice.nameRu;
    if (!text.empty())
        return text;
    const bool isInteger =
        d.binding.type == PropertyType::Int || d.binding.type == PropertyType::UInt;
    if (d.hasRange)
        return std::string(isInteger ? "целое " : "") + "от " + limitText(d.minimum) + " до " +
               limitText(d.maximum);
    if (isInteger)
        return "целое число";
    if (d.binding.type == PropertyType::Double)
        return "число, например 12,5";
    return d.binding.type == PropertyType::Color ? "цвет вида #RRGGBB" : std::string();
}

} // namespace Nodes::CellText
