#include "nodes/texts/LuaCheck.h"

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/texts/LuaMessages.h"

#include <algorithm>
#include <set>

namespace Nodes::LuaCheck {

namespace {

using std::size_t;

// An expression is compiled as what follows `return `.
enum class Reading { Expression, Block };

Result compile(const std::string &text, Reading reading)
{
    LuaSandbox sandbox;
    LuaSandbox::Script script = 0;
    return sandbox.CompileBlock("text", reading == Reading::Block ? text : "return " + text,
                                script);
}

size_t lineBegin(const std::string &text, int line)
{
    size_t at = 0;
    while (--line > 0 && at != std::string::npos)
        at = text.find('\n', at) + 1;
    return at;
}

// The interpreter reads up to the piece it complains of and no further: the first one up to which
// the text fails in the same way is it, however many look alike.
size_t placeOf(const LuaMessage &message, const std::string &text, Reading reading)
{
    size_t at = text.find(message.near, lineBegin(text, message.line));
    for (; at != std::string::npos; at = text.find(message.near, at + 1)) {
        const Result cut = compile(text.substr(0, at + message.near.size()), reading);
        if (!cut && LuaMessage::Of(cut.GetDetail()).near == message.near)
            return at;
    }
    return text.size();
}

bool isSetBehind(std::string_view text, const std::vector<LuaToken> &tokens, size_t comma)
{
    while (comma + 2 < tokens.size() && tokens[comma].In(text) == "," &&
           tokens[comma + 1].sort == LuaToken::Name)
        comma += 2;
    return comma < tokens.size() && tokens[comma].In(text) == "=";
}

// Names that get a value in the text: a = ..., local a, b, for a in ..., function a(b, c).
std::set<std::string_view> assigned(std::string_view text, const std::vector<LuaToken> &tokens)
{
    std::set<std::string_view> names;
    bool isList = false;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const std::string_view word = tokens[i].In(text);
        const bool isName = tokens[i].sort == LuaToken::Name;
        const bool isAttribute = isList && word == "<";
        if (word == "local" || word == "for" || word == "function")
            isList = true;
        else if (isList && !isName && word != "," && word != "(")
            isList = false;
        const std::string_view next = i + 1 < tokens.size() ? tokens[i + 1].In(text) : "";
        // The names before a comma may get a value further on: a, b = 1, 2.
        const bool isSet = next == "=" || (next == "," && isSetBehind(text, tokens, i + 1));
        if (isName && (isList || isSet))
            names.insert(word);
        if (word == "goto" || isAttribute)
            names.insert(next);
    }
    return names;
}

bool isField(std::string_view text, const std::vector<LuaToken> &tokens, size_t i)
{
    return i > 0 && (tokens[i - 1].In(text) == "." || tokens[i - 1].In(text) == ":");
}

std::vector<LuaToken> withoutComments(const std::string &text)
{
    std::vector<LuaToken> tokens = LuaTokens(text);
    tokens.erase(std::remove_if(tokens.begin(), tokens.end(),
                                [](const LuaToken &t) { return t.sort == LuaToken::Comment; }),
                 tokens.end());
    return tokens;
}

// Of a text that can be compiled: whether some way through it gives one.
bool givesValue(const std::string &text)
{
    const std::vector<LuaToken> tokens = withoutComments(text);
    const bool returns = std::any_of(tokens.begin(), tokens.end(), [&](const LuaToken &token) {
        return token.sort == LuaToken::Keyword && token.In(text) == "return";
    });
    return returns || (!tokens.empty() && compile(text, Reading::Expression).IsSuccess());
}

std::string wholeLetters(const std::string &text, size_t begin, size_t length)
{
    size_t end = begin + length;
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        ++end;
    return text.substr(begin, end - begin);
}

std::vector<TextProblem> problemsOf(const std::string &text, Reading reading)
{
    const Result compiled = compile(text, reading);
    if (compiled)
        return {};
    LuaMessage message = LuaMessage::Of(compiled.GetDetail());
    const bool isAtEnd = message.near.empty() || message.near == "<eof>";
    const size_t begin = isAtEnd ? text.size() : placeOf(message, text, reading);
    if (begin == text.size())
        return {{begin, 0, message.ToRussian()}};
    message.near = wholeLetters(text, begin, message.near.size());
    return {{begin, message.near.size(), message.ToRussian()}};
}

} // namespace

std::vector<TextProblem> Syntax(const std::string &text, LuaForm form)
{
    if (text.empty())
        return {};
    const std::vector<TextProblem> asBlock = problemsOf(text, Reading::Block);
    if (form == LuaForm::Block)
        return asBlock;
    const std::vector<TextProblem> asExpression = problemsOf(text, Reading::Expression);
    if ((asBlock.empty() || asExpression.empty()) && !givesValue(text))
        return {{text.size(), 0, "значения нет: нужно выражение или return"}};
    if (asBlock.empty() || asExpression.empty())
        return {};
    // What gets further is what is meant.
    return asBlock[0].begin > asExpression[0].begin ? asBlock : asExpression;
}

std::vector<TextProblem> UnknownNames(const std::string &text, const std::vector<TextWord> &words)
{
    const std::vector<LuaToken> tokens = withoutComments(text);
    std::set<std::string_view> known = assigned(text, tokens);
    for (const TextWord &word : words)
        known.insert(word.text);
    std::vector<TextProblem> problems;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const std::string_view name = tokens[i].In(text);
        if (tokens[i].sort != LuaToken::Name || isField(text, tokens, i) || known.count(name) != 0)
            continue;
        problems.push_back({tokens[i].begin, tokens[i].length,
                            "имени «" + std::string(name) + "» здесь нет, оно не имеет значения",
                            true});
    }
    return problems;
}

std::vector<Reference> References(const std::string &text,
                                  const std::vector<std::string_view> &functions)
{
    const std::vector<LuaToken> tokens = withoutComments(text);
    std::vector<Reference> found;
    for (size_t i = 2; i < tokens.size(); ++i) {
        const std::string_view function = tokens[i - 2].In(text);
        const bool isCalled =
            tokens[i - 1].In(text) == "(" &&
            std::find(functions.begin(), functions.end(), function) != functions.end();
        const std::string_view next = i + 1 < tokens.size() ? tokens[i + 1].In(text) : ")";
        const bool isWhole = next == ")" || next == ","; // what is put together is known when run
        const bool isPlain = tokens[i].In(text).find('\\') == std::string_view::npos;
        if (isCalled && isWhole && isPlain && tokens[i].sort == LuaToken::Text)
            found.push_back({tokens[i], std::string(LuaTextOf(tokens[i].In(text)))});
    }
    return found;
}

} // namespace Nodes::LuaCheck
