#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace Editor {

/// Asks for a new password twice; it is shown nowhere. GUI thread.
class PasswordDialog : public QDialog
{
    Q_OBJECT

public:
    PasswordDialog(const QString &user, QWidget *parent);
    ~PasswordDialog() override;

    QString password() const;

private:
    void check();

    QLineEdit *m_first; ///< children
    QLineEdit *m_second;
    QLabel *m_verdict;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
