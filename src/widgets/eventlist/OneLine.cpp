#include "widgets/eventlist/OneLine.h"

namespace Widgets {

namespace {

constexpr int longest = 400; // characters: more than any cell has room for

bool isDirectionMark(ushort code)
{
    return code == 0x061c || code == 0x200e || code == 0x200f ||
           (code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069);
}

QString cleaned(QString text, bool keepsLines)
{
    for (QChar &sign : text) {
        const ushort code = sign.unicode();
        const bool isLineEnd = code == '\n' || code == 0x2028 || code == 0x2029;
        if (isLineEnd && keepsLines)
            sign = QLatin1Char('\n');
        else if (code < ' ' || (code >= 0x7f && code < 0xa0) || isLineEnd)
            sign = QLatin1Char(' ');
        else if (isDirectionMark(code))
            sign = QChar(0x25af);
    }
    return text;
}

} // namespace

QString OneLine(std::string_view utf8)
{
    // A character has four bytes at most.
    const auto bytes = int(std::min<std::size_t>(utf8.size(), std::size_t(longest) * 4));
    QString text = cleaned(QString::fromUtf8(utf8.data(), bytes), false);
    if (text.size() > longest || std::size_t(bytes) < utf8.size())
        text = text.left(longest) + QStringLiteral("…");
    return text;
}

QString OneLine(const QString &text)
{
    return cleaned(text.size() > longest ? text.left(longest) + QStringLiteral("…") : text, false);
}

QString SafeText(const QString &text)
{
    return cleaned(text, true);
}

} // namespace Widgets
