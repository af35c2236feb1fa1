#include "editor/properties/texts/CodeHighlighter.h"

#include "nodes/texts/LuaTokens.h"

#include <QTextDocument>

namespace Editor {

namespace {

using Nodes::LuaToken;

// Told apart by weight and slant too, not by colour alone; readable on white and on grey.
QTextCharFormat formatOf(int sort)
{
    QTextCharFormat format;
    switch (sort) {
    case LuaToken::Keyword:
        format.setForeground(QColor(0x1f, 0x3f, 0x7a));
        format.setFontWeight(QFont::Bold);
        break;
    case LuaToken::Number:
        format.setForeground(QColor(0x7a, 0x3e, 0x00));
        break;
    case LuaToken::Text:
        format.setForeground(QColor(0x1d, 0x60, 0x2d));
        break;
    case LuaToken::Comment:
        format.setForeground(QColor(0x5c, 0x62, 0x68));
        format.setFontItalic(true);
        break;
    default:
        break;
    }
    return format;
}

} // namespace

CodeHighlighter::CodeHighlighter(QTextDocument *document) : QSyntaxHighlighter(document) {}

CodeHighlighter::~CodeHighlighter() = default;

// A quote or a bracket of many lines concerns what follows: the text is read as a whole, once a
// change. The document's revision does not tell of every one.
void CodeHighlighter::readPieces()
{
    const QString now = document()->toPlainText();
    if (m_read == now)
        return;
    m_read = now;
    m_pieces.clear();
    const std::string text = now.toStdString();
    int character = 0;
    std::size_t byte = 0;
    for (const LuaToken &token : Nodes::LuaTokens(text)) {
        character += QString::fromUtf8(text.data() + byte, int(token.begin - byte)).size();
        const int length = QString::fromUtf8(text.data() + token.begin, int(token.length)).size();
        m_pieces.push_back({character, character + length, token.sort});
        character += length;
        byte = token.begin + token.length;
    }
}

void CodeHighlighter::highlightBlock(const QString &text)
{
    readPieces();
    const int begin = currentBlock().position();
    const int end = begin + text.size();
    int open = -1; // what goes on in the next line
    for (const Piece &piece : m_pieces) {
        if (piece.begin >= end && piece.begin > begin)
            break;
        const int from = std::max(piece.begin, begin);
        const int to = std::min(piece.end, end);
        if (from < to)
            setFormat(from - begin, to - from, formatOf(piece.sort));
        if (piece.begin <= end && piece.end > end)
            open = piece.sort;
    }
    setCurrentBlockState(open);
}

} // namespace Editor
