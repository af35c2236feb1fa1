#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/texts/TextLanguage.h"

#include <QDialog>

class QLabel;

namespace Editor {

class CodeEdit;
class TrialPanel;

/// Edits a text of a language: with its words, what is wrong and where, and a trial. Ctrl+Enter
/// takes it, Escape leaves it, after asking when it was changed. Deletes itself when closed.
class ExpressionWindow : public QDialog
{
    Q_OBJECT

public:
    ExpressionWindow(const Nodes::TextLanguage &language, const Nodes::NodeLink &node,
                     QWidget *parent);
    ~ExpressionWindow() override;

    void setText(const QString &text);
    QString text() const;

    void reject() override;

private:
    QWidget *makeWords();
    QWidget *makeButtons();
    void showProblems();

    CodeEdit *m_edit;
    QLabel *m_problems;
    TrialPanel *m_trial;
    QString m_given; ///< the text before
};

} // namespace Editor
