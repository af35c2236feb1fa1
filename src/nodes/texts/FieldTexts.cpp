#include "nodes/texts/FieldTexts.h"

#include <algorithm>

namespace Nodes::FieldTexts {

std::vector<Field> Find(const std::string &text, const std::string &open)
{
    std::vector<Field> fields;
    std::size_t begin = text.find(open);
    while (begin != std::string::npos) {
        const std::size_t close = text.find('}', begin);
        const bool isClosed = close != std::string::npos;
        const std::size_t end = isClosed ? close + 1 : text.size();
        const std::size_t inside = begin + open.size();
        fields.push_back(
            {begin, end - begin, text.substr(inside, end - inside - (isClosed ? 1 : 0)), isClosed});
        begin = text.find(open, end);
    }
    return fields;
}

std::vector<TextProblem> Check(const std::string &text, const std::string &open,
                               const std::vector<TextWord> &words)
{
    std::vector<TextProblem> problems;
    for (const Field &field : Find(text, open)) {
        const std::string written = text.substr(field.begin, field.length);
        const bool isKnown = std::any_of(
            words.begin(), words.end(), [&](const TextWord &word) { return word.text == written; });
        if (!field.isClosed)
            problems.push_back({field.begin, field.length, "скобка { не закрыта", true});
        else if (!isKnown)
            problems.push_back({field.begin, field.length,
                                "поля «" + written + "» нет, оно останется в тексте как есть",
                                true});
    }
    return problems;
}

} // namespace Nodes::FieldTexts
