#include "widgets/reports/engine/expressions/ContentParser.h"

namespace LimeReport::ContentParser {

namespace {

bool beginsExpression(const QString &text, int at)
{
    return at + 2 < text.size() && text.at(at) == '$' && text.at(at + 2) == '{';
}

int stringEnd(const QString &script, int at)
{
    const QChar quote = script.at(at);
    for (int i = at + 1; i < script.size();) {
        if (script.at(i) == quote)
            return i + 1;
        const int nested = nestedEnd(script, i); // a name may hold a quotation mark
        i = nested > 0 ? nested : i + (script.at(i) == '\\' ? 2 : 1);
    }
    return script.size();
}

int commentEnd(const QString &script, int at)
{
    const bool isLine = script.at(at + 1) == '/';
    const int end = script.indexOf(isLine ? QStringLiteral("\n") : QStringLiteral("*/"), at + 2);
    return end < 0 ? script.size() : end + (isLine ? 1 : 2);
}

// Of the expression that begins at `at`; -1 when it is not closed.
int expressionEnd(const QString &content, int at)
{
    return content.at(at + 1) == 'S' ? bracketEnd(content, at + 2) : nestedEnd(content, at);
}

QString decoded(QString html)
{
    return html.replace("&lt;", "<")
        .replace("&gt;", ">")
        .replace("&quot;", "\"")
        .replace("&apos;", "'")
        .replace("&nbsp;", " ")
        .replace("&amp;", "&");
}

ContentPiece::Kind kindOf(QChar letter)
{
    if (letter == 'D')
        return ContentPiece::Kind::Field;
    return letter == 'V' ? ContentPiece::Kind::Variable : ContentPiece::Kind::Script;
}

} // namespace

int nestedEnd(const QString &text, int at)
{
    if (!beginsExpression(text, at) || (text.at(at + 1) != 'D' && text.at(at + 1) != 'V'))
        return -1;
    const int end = text.indexOf('}', at);
    return end < 0 ? -1 : end + 1;
}

bool isQuote(QChar c)
{
    return c == '"' || c == '\'' || c == '`';
}

int lexemeEnd(const QString &script, int at)
{
    const QChar c = script.at(at);
    if (isQuote(c))
        return stringEnd(script, at);
    if (c == '/' && at + 1 < script.size() &&
        (script.at(at + 1) == '/' || script.at(at + 1) == '*'))
        return commentEnd(script, at);
    const int nested = nestedEnd(script, at);
    return nested > 0 ? nested : at + 1;
}

int bracketEnd(const QString &script, int at)
{
    const QChar open = script.at(at);
    const QChar close = open == '{' ? '}' : ')';
    int depth = 0;
    for (int i = at; i < script.size();) {
        if (script.at(i) == open)
            ++depth;
        else if (script.at(i) == close && --depth == 0)
            return i + 1;
        i = lexemeEnd(script, i);
    }
    return -1;
}

Parsed parse(const QString &content, bool isHtml)
{
    Parsed parsed;
    QString text;
    const auto endText = [&parsed, &text] {
        if (!text.isEmpty())
            parsed.pieces.append({ContentPiece::Kind::Text, text, text});
        text.clear();
    };
    for (int i = 0; i < content.size();) {
        const bool isOne =
            beginsExpression(content, i) && QStringLiteral("DVS").contains(content.at(i + 1));
        const int end = isOne ? expressionEnd(content, i) : -1;
        if (end < 0) {
            if (isOne)
                parsed.errors.append(
                    QStringLiteral("у «%1» нет закрывающей скобки; исправьте шаблон")
                        .arg(content.mid(i, 40)));
            text += content.at(i++);
            continue;
        }
        endText();
        const QString body = content.mid(i + 3, end - i - 4);
        parsed.pieces.append(
            {kindOf(content.at(i + 1)), content.mid(i, end - i), isHtml ? decoded(body) : body});
        i = end;
    }
    endText();
    return parsed;
}

} // namespace LimeReport::ContentParser
