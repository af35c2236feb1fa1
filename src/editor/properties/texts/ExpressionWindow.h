#pragma once

#include "editor/properties/values/TextWindow.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/texts/TextLanguage.h"

class QLabel;

namespace Editor {

class CodeEdit;
class TrialPanel;

/// Edits a text of a language: with its words, what is wrong and where, and a trial.
class ExpressionWindow : public TextWindow
{
    Q_OBJECT

public:
    ExpressionWindow(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                     QWidget *parent);
    ~ExpressionWindow() override;

    void setText(const QString &text) override;

private:
    ExpressionWindow(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                     CodeEdit *edit, QWidget *parent);

    QWidget *makeWords();
    void showProblems();

    CodeEdit *m_edit;
    QLabel *m_problems;
    TrialPanel *m_trial;
};

} // namespace Editor
