#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/texts/TextLanguage.h"

#include <QPlainTextEdit>

namespace Editor {

class WordCompleter;

/// Edits a text of a language: offers words (Ctrl+Space at any time), shows the other bracket and
/// where something is wrong. GUI thread.
class CodeEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    CodeEdit(const Nodes::TextLanguage &language, const Nodes::NodeLink &node, QWidget *parent);
    ~CodeEdit() override;

    /// What is wrong with the text as it is now.
    const std::vector<Nodes::TextProblem> &problems() const { return m_problems; }
    WordCompleter *completer() const { return m_completer; }
    /// Puts a word in place of the one being written.
    void insertWord(const QString &word);
    /// Moves the cursor to what is wrong.
    void goTo(const Nodes::TextProblem &problem);
    /// "строка 2, знак 5" of the first byte of it; only the sign in texts of one line.
    QString placeOf(const Nodes::TextProblem &problem) const;

signals:
    /// The text was read again.
    void checked();
    /// Ctrl+Enter, or Enter where there are no more lines.
    void taken();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    void check();
    void mark();
    void offer(bool isAsked);
    bool keyForList(QKeyEvent *event);
    void newLine();
    void addBrackets(QList<QTextEdit::ExtraSelection> &marks) const;

    const Nodes::TextLanguage &m_language;
    Nodes::NodeLink m_node;
    WordCompleter *m_completer;
    std::vector<Nodes::TextProblem> m_problems{};
};

} // namespace Editor
