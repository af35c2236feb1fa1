#include "nodes/values/NumberFormat.h"

#include "nodes/values/NumberText.h"

#include <array>
#include <clocale>
#include <cmath>
#include <cstdio>

namespace Nodes {

namespace {

constexpr std::size_t longestFormat = 64; // bytes
constexpr int longestNumber = 30;         // of width and of precision
constexpr const char *formatProblem = "формат длиннее 64 знаков";
constexpr const char *noConversion = "нет места для числа, например %.2f";
constexpr const char *manyConversions = "число указано дважды";
constexpr const char *wrongConversion = "число пишут %f, %e, %g или %d";
constexpr const char *wrongWidth = "ширина и точность — числа не больше 30";

bool isOneOf(char character, const char *set)
{
    return character != '\0' && std::string(set).find(character) != std::string::npos;
}

/// Moves `place` behind the digits there; false for a number that is too large.
bool skipNumber(const std::string &text, std::size_t &place)
{
    int number = 0;
    for (; place < text.size() && isOneOf(text[place], "0123456789"); ++place) {
        number = number * 10 + (text[place] - '0');
        if (number > longestNumber)
            return false;
    }
    return true;
}

/// Reads a conversion behind its '%' up to its letter; what is wrong with it, or null.
const char *readConversion(const std::string &text, std::size_t &place)
{
    while (place < text.size() && isOneOf(text[place], "-+ #0"))
        ++place;
    if (!skipNumber(text, place))
        return wrongWidth;
    if (place < text.size() && text[place] == '.' && !skipNumber(text, ++place))
        return wrongWidth;
    if (place < text.size() && isOneOf(text[place], "fFeEgGdiu"))
        return nullptr;
    return wrongConversion;
}

std::string withPoint(std::string text)
{
    const std::string point = std::localeconv()->decimal_point;
    const std::size_t place = point == "." ? std::string::npos : text.find(point);
    return place == std::string::npos ? text : text.replace(place, point.size(), ".");
}

std::string print(const std::string &conversion, double value)
{
    std::array<char, 400> buffer{}; // the longest double has 309 digits before the point
    std::snprintf(buffer.data(), buffer.size(), conversion.c_str(), value);
    return withPoint(buffer.data());
}

} // namespace

std::optional<NumberFormat> NumberFormat::Parse(const std::string &format, std::string *problem)
{
    const auto refuse = [problem](const char *what) {
        if (problem)
            *problem = what;
        return std::nullopt;
    };
    if (format.size() > longestFormat)
        return refuse(formatProblem);
    NumberFormat parsed;
    for (std::size_t i = 0; i < format.size(); ++i) {
        std::string &text = parsed.m_conversion.empty() ? parsed.m_before : parsed.m_after;
        if (format[i] != '%' || (i + 1 < format.size() && format[i + 1] == '%')) {
            text += format[i];
            i += format[i] == '%';
            continue;
        }
        if (!parsed.m_conversion.empty())
            return refuse(manyConversions);
        const std::size_t begin = i++;
        if (const char *wrong = readConversion(format, i))
            return refuse(wrong);
        parsed.m_conversion = format.substr(begin, i - begin);
        const bool isWhole = isOneOf(format[i], "diu");
        if (isWhole && parsed.m_conversion.find('.') != std::string::npos)
            return refuse(wrongConversion);
        parsed.m_conversion += isWhole ? ".0f" : std::string(1, format[i]);
    }
    if (parsed.m_conversion.empty())
        return refuse(noConversion);
    return parsed;
}

std::string NumberFormat::Text(double value) const
{
    if (!std::isfinite(value))
        return m_before + NoValueText + m_after;
    std::string number = print(m_conversion, value);
    if (value < 0 && number.find_first_of("123456789") == std::string::npos)
        number = print(m_conversion, 0.0);
    return m_before + number + m_after;
}

} // namespace Nodes
