#pragma once

#include <QDialog>

class QDialogButtonBox;
class QPlainTextEdit;

namespace Editor {

/// Text of several lines. Ctrl+Enter takes it, Escape leaves it, after asking when it was changed.
/// Deletes itself when closed.
class TextWindow : public QDialog
{
    Q_OBJECT

public:
    explicit TextWindow(QWidget *parent);
    ~TextWindow() override;

    virtual void setText(const QString &text);
    QString text() const;

    void reject() override;

protected:
    /// For a window that lays out `edit`, which it owns, and the buttons itself.
    TextWindow(QPlainTextEdit *edit, QWidget *parent);

    QDialogButtonBox *makeButtons();

private:
    QPlainTextEdit *m_edit;
    QString m_given; ///< the text before
};

} // namespace Editor
