#include "nodes/values/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace Nodes {

namespace {

template <class Number> std::optional<Number> parseWhole(std::string_view text)
{
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    Number number{};
    const char *end = text.data() + text.size();
    const auto parsed = std::from_chars(text.data(), end, number);
    if (text.empty() || parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return number;
}

bool isNegativeZeroText(std::string_view text)
{
    return text.front() == '-' && text.find_first_of("123456789in") == std::string_view::npos;
}

} // namespace

std::optional<double> ParseDouble(std::string_view text)
{
    return parseWhole<double>(text);
}

std::optional<long long> ParseInteger(std::string_view text)
{
    return parseWhole<long long>(text);
}

std::string FormatDouble(double value)
{
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), written.ptr};
}

std::string FormatFixed(double value, int decimals)
{
    std::array<char, 352> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed, std::clamp(decimals, 0, 15));
    std::string text(buffer.data(), written.ptr);
    if (isNegativeZeroText(text))
        text.erase(0, 1);
    return text;
}

std::string FormatExact(double value, int decimals)
{
    constexpr double longest = 1e15;
    if (!(std::abs(value) < longest))
        return FormatDouble(value);
    std::array<char, 352> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::fixed);
    const std::string_view text(buffer.data(), std::size_t(written.ptr - buffer.data()));
    const std::size_t point = text.find('.');
    const std::size_t own = point == std::string_view::npos ? 0 : text.size() - point - 1;
    return own > std::size_t(std::max(decimals, 0)) ? std::string(text)
                                                    : FormatFixed(value, decimals);
}

std::string FormatShown(double value, int decimals)
{
    constexpr double longest = 1e15;
    if (!(std::abs(value) >= longest) || std::isinf(value))
        return FormatFixed(value, decimals);
    std::array<char, 32> buffer{};
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, 6);
    return {buffer.data(), written.ptr};
}

} // namespace Nodes
