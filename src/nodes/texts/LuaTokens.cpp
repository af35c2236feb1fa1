#include "nodes/texts/LuaTokens.h"

#include <algorithm>
#include <string>

namespace Nodes {

namespace {

using std::size_t;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Reads one token from a place; all return where it ends.
class Reader
{
public:
    explicit Reader(std::string_view text) : m_text(text) {}

    LuaToken Read(size_t at) const
    {
        const char c = m_text[at];
        if (isLetter(c))
            return word(at);
        if (isDigit(c) || (c == '.' && isDigit(peek(at + 1))))
            return token(LuaToken::Number, at, number(at));
        if (c == '"' || c == '\'')
            return token(LuaToken::Text, at, quoted(at));
        if (m_text.substr(at, 2) == "--")
            return token(LuaToken::Comment, at, comment(at));
        if (const size_t end = longBracket(at); end != at)
            return token(LuaToken::Text, at, end);
        return token(LuaToken::Symbol, at, symbol(at));
    }

private:
    char peek(size_t at) const { return at < m_text.size() ? m_text[at] : '\0'; }
    LuaToken token(LuaToken::enSort sort, size_t begin, size_t end) const
    {
        return {sort, begin, end - begin};
    }
    LuaToken word(size_t begin) const
    {
        size_t end = begin;
        while (isLetter(peek(end)) || isDigit(peek(end)))
            ++end;
        const auto &words = LuaKeywords();
        const bool isKeyword =
            std::find(words.begin(), words.end(), m_text.substr(begin, end - begin)) != words.end();
        return token(isKeyword ? LuaToken::Keyword : LuaToken::Name, begin, end);
    }
    size_t number(size_t at) const
    {
        const bool isHex = peek(at) == '0' && (peek(at + 1) | 0x20) == 'x';
        for (;; ++at) {
            const char c = char(peek(at) | 0x20);
            const bool isExponent = c == (isHex ? 'p' : 'e');
            if (isExponent && (peek(at + 1) == '+' || peek(at + 1) == '-'))
                ++at;
            else if (!isDigit(peek(at)) && !isLetter(peek(at)) && peek(at) != '.')
                return at;
        }
    }
    size_t quoted(size_t at) const
    {
        const char quote = m_text[at++];
        while (at < m_text.size() && m_text[at] != '\n') {
            if (m_text[at] == quote)
                return at + 1;
            at += m_text[at] == '\\' ? 2 : 1;
        }
        return std::min(at, m_text.size());
    }
    size_t comment(size_t at) const
    {
        const size_t end = longBracket(at + 2);
        return end != at + 2 ? end : std::min(m_text.find('\n', at), m_text.size());
    }
    // [[...]] or [==[...]==]; the place itself when there is none.
    size_t longBracket(size_t at) const
    {
        size_t open = at + 1;
        while (peek(open) == '=')
            ++open;
        if (peek(at) != '[' || peek(open) != '[')
            return at;
        const std::string close = "]" + std::string(open - at - 1, '=') + "]";
        const size_t end = m_text.find(close, open + 1);
        return end == std::string_view::npos ? m_text.size() : end + close.size();
    }
    size_t symbol(size_t at) const
    {
        for (const std::string_view longer :
             {"...", "..", "==", "~=", "<=", ">=", "//", "::", "<<", ">>"}) {
            if (m_text.substr(at, longer.size()) == longer)
                return at + longer.size();
        }
        // A letter of another script is one symbol, not the bytes it is made of.
        ++at;
        while ((static_cast<unsigned char>(peek(at)) & 0xC0U) == 0x80U)
            ++at;
        return at;
    }

    std::string_view m_text;
};

} // namespace

const std::vector<std::string_view> &LuaKeywords()
{
    static const std::vector<std::string_view> words{
        "and",      "break",  "do",   "else", "elseif", "end",  "false", "for",
        "function", "goto",   "if",   "in",   "local",  "nil",  "not",   "or",
        "repeat",   "return", "then", "true", "until",  "while"};
    return words;
}

std::vector<LuaToken> LuaTokens(std::string_view text)
{
    const Reader reader(text);
    std::vector<LuaToken> tokens;
    for (size_t at = 0; at < text.size();) {
        if (isBlank(text[at])) {
            ++at;
            continue;
        }
        tokens.push_back(reader.Read(at));
        at += tokens.back().length;
    }
    return tokens;
}

std::string_view LuaTextOf(std::string_view token)
{
    const size_t open = token.empty() || token[0] != '[' ? 1 : token.find('[', 1) + 1;
    return token.size() < 2 * open ? std::string_view()
                                   : token.substr(open, token.size() - 2 * open);
}

} // namespace Nodes
