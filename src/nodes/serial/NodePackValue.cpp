#include "nodes/serial/NodePackValue.h"

#include "nodes/model/BasicNode.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/serial/Utf8.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NumberText.h"

#include <msgpack.hpp>

#include <optional>

namespace Nodes {

namespace {

namespace type = msgpack::type;

bool isNumber(const msgpack::object &object)
{
    return object.type == type::POSITIVE_INTEGER || object.type == type::NEGATIVE_INTEGER;
}

std::optional<std::string> integerText(const msgpack::object &object)
{
    if (!isNumber(object))
        return std::nullopt;
    return object.type == type::POSITIVE_INTEGER ? std::to_string(object.via.u64)
                                                 : std::to_string(object.via.i64);
}

std::optional<std::string> doubleText(const msgpack::object &object)
{
    if (object.type == type::FLOAT32 || object.type == type::FLOAT64)
        return FormatDouble(object.via.f64);
    return integerText(object);
}

std::optional<std::string> colorText(const msgpack::object &object)
{
    if (object.type != type::POSITIVE_INTEGER || object.via.u64 > 0xFFFFFFFFu)
        return std::nullopt;
    const auto channel = [&](unsigned shift) { return int(object.via.u64 >> shift & 0xFFu); };
    return NColor(channel(24), channel(16), channel(8), channel(0)).ToHex();
}

std::optional<std::string> linksText(const msgpack::object &object)
{
    if (object.type != type::ARRAY)
        return std::nullopt;
    std::string text;
    for (std::uint32_t i = 0; i < object.via.array.size; ++i) {
        const auto id = integerText(object.via.array.ptr[i]);
        if (!id)
            return std::nullopt;
        text += (text.empty() ? "" : " ") + *id;
    }
    return text;
}

std::optional<std::string> plainText(const msgpack::object &object)
{
    std::string text;
    return ReadPackedText(object, text) ? std::optional<std::string>(text) : std::nullopt;
}

/// The value as project files write it, so that ranges and choices are checked in one place.
std::optional<std::string> textOf(PropertyType propertyType, const msgpack::object &object)
{
    switch (propertyType) {
    case PropertyType::Bool:
        if (object.type != type::BOOLEAN)
            return std::nullopt;
        return object.via.boolean ? "true" : "false";
    case PropertyType::Int:
    case PropertyType::UInt:
    case PropertyType::Link:
        return integerText(object);
    case PropertyType::Double:
        return doubleText(object);
    case PropertyType::Color:
        return colorText(object);
    case PropertyType::Links:
        return linksText(object);
    default:
        return plainText(object);
    }
}

} // namespace

bool ReadPackedText(const msgpack::object &object, std::string &text)
{
    if (object.type != type::STR)
        return false;
    const std::string_view bytes(object.via.str.ptr, object.via.str.size);
    if (bytes.find('\0') != std::string_view::npos || FindInvalidUtf8(bytes))
        return false;
    text.assign(bytes);
    return true;
}

bool ReadPackedValue(const PropertyDescriptor &d, BasicNode &node, const msgpack::object &object)
{
    const auto text = textOf(d.binding.type, object);
    return text && d.binding.parse(d, node, *text);
}

} // namespace Nodes
