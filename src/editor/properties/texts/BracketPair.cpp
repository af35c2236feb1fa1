#include "editor/properties/texts/BracketPair.h"

#include "nodes/texts/LuaTokens.h"

#include <vector>

namespace Editor {

namespace {

const QString opening = QStringLiteral("([{");
const QString closing = QStringLiteral(")]}");

// The text with blanks in place of what does not count.
QString counted(const QString &text, bool isLua)
{
    if (!isLua)
        return text;
    QString left = text;
    const std::string bytes = text.toStdString();
    std::size_t byte = 0;
    int character = 0;
    for (const Nodes::LuaToken &token : Nodes::LuaTokens(bytes)) {
        character += QString::fromUtf8(bytes.data() + byte, int(token.begin - byte)).size();
        const int length = QString::fromUtf8(bytes.data() + token.begin, int(token.length)).size();
        if (token.sort == Nodes::LuaToken::Text || token.sort == Nodes::LuaToken::Comment)
            left.replace(character, length, QString(length, QLatin1Char(' ')));
        character += length;
        byte = token.begin + token.length;
    }
    return left;
}

int partnerOf(const QString &text, int at)
{
    const int step = opening.contains(text.at(at)) ? 1 : -1;
    const QString &deeper = step > 0 ? opening : closing;
    std::vector<QChar> wanted;
    for (int i = at; i >= 0 && i < text.size(); i += step) {
        const QChar c = text.at(i);
        if (deeper.contains(c)) {
            wanted.push_back(step > 0 ? closing.at(opening.indexOf(c))
                                      : opening.at(closing.indexOf(c)));
        } else if (opening.contains(c) || closing.contains(c)) {
            if (c != wanted.back())
                return at;
            wanted.pop_back();
            if (wanted.empty())
                return i;
        }
    }
    return at;
}

} // namespace

std::optional<std::pair<int, int>> bracketPair(const QString &text, int cursor, bool isLua)
{
    const QString left = counted(text, isLua);
    for (const int at : {cursor - 1, cursor}) {
        const bool isBracket = at >= 0 && at < left.size() &&
                               (opening.contains(left.at(at)) || closing.contains(left.at(at)));
        if (isBracket)
            return std::make_pair(at, partnerOf(left, at));
    }
    return std::nullopt;
}

} // namespace Editor
