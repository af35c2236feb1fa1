#pragma once

#include "editor/properties/values/ValueEditor.h"

class QLineEdit;

namespace Nodes {
struct TextLanguage;
}

namespace Editor {

class WordCompleter;

/// A text of a language in its row: words are offered and what is wrong is shown while it is
/// written. The window, and several lines, are behind the button.
class ExpressionEditor : public ValueEditor
{
    Q_OBJECT

public:
    ExpressionEditor(const ValueContext &context, QWidget *parent);
    ~ExpressionEditor() override;

    void setText(const QString &text) override;
    QString text() const override;

private:
    void openWindow();
    void insertWord(const QString &word);
    void check();
    WordCompleter *completer();
    void offer(bool isAsked);

    const Nodes::TextLanguage &m_language;
    QLineEdit *m_line;
    WordCompleter *m_completer = nullptr; ///< made when first needed: its words are looked up
    QString m_text{};                     ///< what the line cannot show: several lines
};

} // namespace Editor
