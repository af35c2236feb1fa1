#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace Editor {

/// Text of several lines. Ctrl+Enter takes it, Escape leaves it. Deletes itself when closed.
class TextWindow : public QDialog
{
    Q_OBJECT

public:
    explicit TextWindow(QWidget *parent);
    ~TextWindow() override;

    void setText(const QString &text);
    QString text() const;

private:
    QPlainTextEdit *m_edit;
};

} // namespace Editor
