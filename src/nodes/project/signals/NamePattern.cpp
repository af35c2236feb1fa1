#include "nodes/project/signals/NamePattern.h"

#include "nodes/values/NumberText.h"

#include <algorithm>
#include <string_view>

namespace Nodes::NamePattern {

namespace {

using Texts = std::vector<std::string>;

Result wrong(const std::string &what)
{
    return Result(Result::InvalidArgument, what);
}

Result tooMany()
{
    return Result(Result::LimitExceeded,
                  "образец даёт больше " + std::to_string(Most) + " имён; разбейте его на части");
}

std::string padded(long long number, std::size_t width)
{
    std::string digits = std::to_string(number < 0 ? -number : number);
    if (digits.size() < width)
        digits.insert(0, width - digits.size(), '0');
    return number < 0 ? "-" + digits : digits;
}

Result count(std::string_view from, std::string_view to, Texts &texts)
{
    const auto first = ParseInteger(from);
    const auto last = ParseInteger(to);
    if (!first || !last)
        return wrong("«{" + std::string(from) + ".." + std::string(to) +
                     "}»: по обе стороны «..» должны стоять целые числа");
    const auto isPadded = [](std::string_view text) { return text.size() > 1 && text[0] == '0'; };
    const std::size_t width = isPadded(from) || isPadded(to) ? std::max(from.size(), to.size()) : 0;
    const unsigned long long steps =
        *last > *first ? (unsigned long long)(*last) - (unsigned long long)(*first)
                       : (unsigned long long)(*first) - (unsigned long long)(*last);
    if (steps >= Most)
        return tooMany();
    const int direction = *last < *first ? -1 : 1;
    for (long long step = 0; step <= (long long)(steps); ++step)
        texts.push_back(padded(*first + direction * step, width));
    return Result();
}

Result readBraces(std::string_view inner, Texts &texts)
{
    const std::size_t dots = inner.find("..");
    if (dots != std::string_view::npos)
        return count(inner.substr(0, dots), inner.substr(dots + 2), texts);
    if (inner.find(',') == std::string_view::npos)
        return wrong("«{" + std::string(inner) +
                     "}»: напишите диапазон «{1..20}» или список «{вход,выход}»");
    while (true) {
        const std::size_t comma = inner.find(',');
        texts.emplace_back(inner.substr(0, comma));
        if (comma == std::string_view::npos)
            return Result();
        inner.remove_prefix(comma + 1);
    }
}

Result multiply(Texts &names, const Texts &texts)
{
    if (names.size() * texts.size() > Most)
        return tooMany();
    Texts product;
    product.reserve(names.size() * texts.size());
    for (const std::string &name : names) {
        for (const std::string &text : texts)
            product.push_back(name + text);
    }
    names = std::move(product);
    return Result();
}

void replaceAll(std::string &text, const std::string &search, const std::string &replacement)
{
    if (search.empty())
        return;
    for (std::size_t at = text.find(search); at != std::string::npos;
         at = text.find(search, at + replacement.size()))
        text.replace(at, search.size(), replacement);
}

std::string counted(const std::string &brace, std::size_t index)
{
    const std::string digits = brace.substr(1, brace.size() - 2);
    const auto first = ParseInteger(digits);
    if (!first || *first < 0 || digits.size() > 9)
        return brace;
    return padded(*first + (long long)(index), digits.size());
}

} // namespace

Result Expand(const std::string &pattern, std::vector<std::string> &names)
{
    names.assign(1, {});
    Result result;
    for (std::size_t at = 0; at < pattern.size() && result;) {
        const std::size_t open = pattern.find('{', at);
        const std::size_t close = pattern.find('}', open);
        Texts texts{pattern.substr(at, open - at)};
        if (open == std::string::npos) {
            at = open;
        } else if (pattern.compare(open, 2, "{{") == 0) {
            texts[0] += '{';
            at = open + 2;
        } else if (close == std::string::npos) {
            result = wrong("фигурная скобка в «" + pattern.substr(open) + "» не закрыта");
        } else {
            result = multiply(names, texts);
            texts.clear();
            if (result)
                result =
                    readBraces(std::string_view(pattern).substr(open + 1, close - open - 1), texts);
            at = close + 1;
        }
        if (result)
            result = multiply(names, texts);
    }
    if (!result)
        names.clear();
    return result;
}

std::string Renamed(const std::string &name, std::size_t index, const std::string &search,
                    const std::string &replacement, const std::string &form)
{
    std::string changed = name;
    replaceAll(changed, search, replacement);
    if (form.empty())
        return changed;
    std::string result;
    for (std::size_t at = 0; at < form.size();) {
        const std::size_t open = std::min(form.find('{', at), form.size());
        const std::size_t close = form.find('}', open);
        result.append(form, at, open - at);
        if (close == std::string::npos)
            return result.append(form, open, std::string::npos);
        const std::string brace = form.substr(open, close + 1 - open);
        result += brace == "{имя}" ? changed : counted(brace, index);
        at = close + 1;
    }
    return result;
}

} // namespace Nodes::NamePattern
