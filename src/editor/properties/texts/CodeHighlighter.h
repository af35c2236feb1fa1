#pragma once

#include <QSyntaxHighlighter>

namespace Editor {

/// Colours a Lua text by its pieces: keywords, numbers, texts in quotes, comments.
class CodeHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT

public:
    explicit CodeHighlighter(QTextDocument *document);
    ~CodeHighlighter() override;

protected:
    void highlightBlock(const QString &text) override;

private:
    struct Piece
    {
        int begin;
        int end;
        int sort;
    };
    void readPieces();

    std::vector<Piece> m_pieces{}; ///< of the whole document, in characters
    QString m_read{};              ///< what they are of
};

} // namespace Editor
