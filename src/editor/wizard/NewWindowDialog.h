#pragma once

#include <QDialog>

class QComboBox;
class QDialogButtonBox;
class QLineEdit;
class QSpinBox;

namespace Editor {

/// Asks for the name, size and display of a new window, or of the screens of a station. GUI thread.
class NewWindowDialog : public QDialog
{
    Q_OBJECT

public:
    NewWindowDialog(const QString &name, QWidget *parent);

    /// The display asked for at first. With 0 windows may also open when they are called only.
    void setDisplay(int display, bool mayBeCalled);

    QString name() const;
    QSize size() const;
    /// From 1; 0: when it is called.
    int display() const;

private:
    void takePreset(int index);
    void check();

    QLineEdit *m_name;
    QComboBox *m_preset;
    QSpinBox *m_width;
    QSpinBox *m_height;
    QSpinBox *m_display;
    QDialogButtonBox *m_buttons;
};

} // namespace Editor
