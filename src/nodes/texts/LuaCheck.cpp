#include "nodes/texts/LuaCheck.h"

#include "nodes/scripts/LuaSandbox.h"
#include "nodes/texts/LuaMessages.h"

#include <algorithm>
#include <set>

namespace Nodes::LuaCheck {

namespace {

using std::size_t;

Result compile(const std::string &text, LuaForm form)
{
    LuaSandbox sandbox;
    LuaSandbox::Script script = 0;
    return form == LuaForm::Block ? sandbox.CompileBlock("text", text, script)
                                  : sandbox.Compile("text", text, script);
}

bool isBlankOnly(const std::string &text)
{
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
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
size_t placeOf(const LuaMessage &message, const std::string &text, LuaForm form)
{
    size_t at = text.find(message.near, lineBegin(text, message.line));
    for (; at != std::string::npos; at = text.find(message.near, at + 1)) {
        const Result cut = compile(text.substr(0, at + message.near.size()), form);
        if (!cut && LuaMessage::Of(cut.GetDetail()).near == message.near)
            return at;
    }
    return text.size();
}

// Names that get a value in the text: a = ..., local a, b, for a in ..., function a(b, c).
std::set<std::string_view> assigned(std::string_view text, const std::vector<LuaToken> &tokens)
{
    std::set<std::string_view> names;
    bool isList = false;
    for (size_t i = 0; i < tokens.size(); ++i) {
        const std::string_view word = tokens[i].In(text);
        const bool isName = tokens[i].sort == LuaToken::Name;
        if (word == "local" || word == "for" || word == "function")
            isList = true;
        else if (isList && !isName && word != "," && word != "(")
            isList = false;
        const bool isSet = i + 1 < tokens.size() && tokens[i + 1].In(text) == "=";
        if (isName && (isList || isSet))
            names.insert(word);
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

} // namespace

std::vector<TextProblem> Syntax(const std::string &text, LuaForm form)
{
    if (isBlankOnly(text))
        return {};
    const Result compiled = compile(text, form);
    if (compiled)
        return {};
    const LuaMessage message = LuaMessage::Of(compiled.GetDetail());
    const bool isAtEnd = message.near.empty() || message.near == "<eof>";
    const size_t begin = isAtEnd ? text.size() : placeOf(message, text, form);
    return {{begin, begin == text.size() ? 0 : message.near.size(), message.ToRussian()}};
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
        const bool isWhole = i + 1 == tokens.size() || tokens[i + 1].In(text) != ".."; // known here
        if (isCalled && isWhole && tokens[i].sort == LuaToken::Text)
            found.push_back({tokens[i], std::string(LuaTextOf(tokens[i].In(text)))});
    }
    return found;
}

} // namespace Nodes::LuaCheck
