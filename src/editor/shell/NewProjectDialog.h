#pragma once

#include <QDialog>

class QDialogButtonBox;
class QLabel;
class QLineEdit;

namespace Editor {

/// Asks for the name of a new project and where it goes: a directory of its own, below the one
/// chosen and named like the project. GUI thread.
class NewProjectDialog : public QDialog
{
    Q_OBJECT

public:
    explicit NewProjectDialog(QWidget *parent);

    QString name() const;
    QString directory() const;

private:
    void browse();
    void check();

    QLineEdit *m_name;
    QLineEdit *m_place;
    QLabel *m_verdict;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
