#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Editor {

/// Asks for a new password twice and makes its hash. The password itself is forgotten with the
/// window. Deletes itself when closed.
class SecretWindow : public QDialog
{
    Q_OBJECT

public:
    explicit SecretWindow(QWidget *parent);
    ~SecretWindow() override;

    /// Of the password that was accepted; takes some 0.1 s.
    QString hash() const;

private:
    void check();

    QLineEdit *m_password;
    QLineEdit *m_again;
    QLabel *m_hint;
    QPushButton *m_take;
};

} // namespace Editor
