#include "nodes/model/properties/PropertyText.h"

#include "nodes/values/NumberText.h"

#include <cmath>
#include <limits>

namespace Nodes {

namespace {

bool inRange(const PropertyDescriptor &d, double value)
{
    return !d.hasRange || (value >= d.minimum && value <= d.maximum);
}

template <class Integer>
bool parseInteger(const PropertyDescriptor &d, std::string_view text, Integer &value)
{
    const auto number = ParseInteger(text);
    if (!number || *number < std::numeric_limits<Integer>::min() ||
        *number > std::numeric_limits<Integer>::max() || !inRange(d, double(*number)))
        return false;
    value = static_cast<Integer>(*number);
    return true;
}

bool parseChoice(const PropertyDescriptor &d, std::string_view text, int &value)
{
    if (d.choices.empty())
        return parseInteger(d, text, value);
    const auto code = ParseInteger(text);
    for (const PropertyChoice &choice : d.choices) {
        if (choice.token == text || code == choice.code) {
            value = choice.code;
            return true;
        }
    }
    return false;
}

bool parseId(std::string_view text, Collection collection, NodeLink &link)
{
    const auto id = ParseInteger(text);
    if (!id || *id < 0)
        return false;
    link = *id == 0 ? NodeLink() : NodeLink(static_cast<unsigned long>(*id), collection);
    return true;
}

} // namespace

std::string FormatProperty(const PropertyDescriptor &, bool value)
{
    return value ? "true" : "false";
}

std::string FormatProperty(const PropertyDescriptor &d, int value)
{
    for (const PropertyChoice &choice : d.choices) {
        if (choice.code == value)
            return choice.token;
    }
    return std::to_string(value);
}

std::string FormatProperty(const PropertyDescriptor &, unsigned value)
{
    return std::to_string(value);
}

std::string FormatProperty(const PropertyDescriptor &, double value)
{
    return FormatDouble(value);
}

std::string FormatProperty(const PropertyDescriptor &, const std::string &value)
{
    return value;
}

std::string FormatProperty(const PropertyDescriptor &, const NColor &value)
{
    return value.ToHex();
}

std::string FormatProperty(const PropertyDescriptor &, const NodeLink &value)
{
    return value.isEmpty() ? std::string() : std::to_string(value.GetNodeId());
}

std::string FormatProperty(const PropertyDescriptor &d, const NodeLinks &value)
{
    std::string text;
    for (const NodeLink &link : value)
        text += (text.empty() ? "" : " ") + std::to_string(link.GetNodeId());
    return text;
}

std::string FormatProperty(const PropertyDescriptor &, const ResourceLink &value)
{
    return value.GetFilePath();
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection, bool &value)
{
    if (text == "true" || text == "1")
        value = true;
    else if (text == "false" || text == "0")
        value = false;
    else
        return false;
    return true;
}

bool ParseProperty(const PropertyDescriptor &d, std::string_view text, Collection, int &value)
{
    return parseChoice(d, text, value);
}

bool ParseProperty(const PropertyDescriptor &d, std::string_view text, Collection, unsigned &value)
{
    return parseInteger(d, text, value);
}

bool ParseProperty(const PropertyDescriptor &d, std::string_view text, Collection, double &value)
{
    const auto number = ParseDouble(text);
    if (!number)
        return false;
    // What a fresh node has can be gone back to: a limit that was none is one at infinity.
    if ((!std::isfinite(*number) || !inRange(d, *number)) && text != d.defaultText)
        return false;
    value = *number;
    return true;
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection,
                   std::string &value)
{
    value.assign(text);
    return true;
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection, NColor &value)
{
    const auto color = NColor::FromHex(text);
    if (color)
        value = *color;
    return color.has_value();
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection collection,
                   NodeLink &value)
{
    if (text.empty()) {
        value = NodeLink();
        return true;
    }
    return parseId(text, collection, value);
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection collection,
                   NodeLinks &value)
{
    NodeLinks links;
    while (!text.empty()) {
        const std::size_t blank = text.find(' ');
        const std::string_view word = text.substr(0, blank);
        NodeLink link;
        if (!word.empty()) {
            if (!parseId(word, collection, link))
                return false;
            links.push_back(link);
        }
        text.remove_prefix(blank == std::string_view::npos ? text.size() : blank + 1);
    }
    value = std::move(links);
    return true;
}

bool ParseProperty(const PropertyDescriptor &, std::string_view text, Collection,
                   ResourceLink &value)
{
    value = ResourceLink(std::string(text));
    return true;
}

} // namespace Nodes
