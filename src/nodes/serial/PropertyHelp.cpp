#include "nodes/serial/PropertyHelp.h"

#include "nodes/values/NumberText.h"

namespace Nodes {

namespace {

std::string describeType(PropertyType type)
{
    switch (type) {
    case PropertyType::Bool:
        return "true или false";
    case PropertyType::Int:
        return "целое число";
    case PropertyType::UInt:
        return "целое число не меньше 0";
    case PropertyType::Double:
        return "число с точкой";
    case PropertyType::Color:
        return "цвет #rrggbb или #rrggbbaa";
    case PropertyType::Link:
        return "номер узла";
    case PropertyType::Links:
        return "номера узлов через пробел";
    default:
        return "текст";
    }
}

std::string describeChoices(const PropertyDescriptor &descriptor)
{
    std::string words;
    for (const PropertyChoice &choice : descriptor.choices)
        words += (words.empty() ? "" : ", ") + choice.token;
    return "одно из: " + words;
}

} // namespace

std::string DescribeExpected(const PropertyDescriptor &d)
{
    if (!d.choices.empty())
        return describeChoices(d);
    std::string text = describeType(d.binding.type);
    if (d.hasRange)
        text += " от " + FormatDouble(d.minimum) + " до " + FormatDouble(d.maximum);
    return text;
}

} // namespace Nodes
