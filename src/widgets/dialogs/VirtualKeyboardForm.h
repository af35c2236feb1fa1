#pragma once

#include <QVector>

class QDialog;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace Widgets {

class CurrentValueLabel;

/// Widgets of the on-screen keyboard, children of the dialog they are set up on and named after
/// their keys.
class VirtualKeyboardForm
{
public:
    void setupUi(QDialog *dialog);
    /// Texts, and the characters of the keys: property "btnData" holds a normal and a shifted one
    /// for each language of the dialog's "Languages".
    void retranslateUi(QDialog *dialog);
    /// Marks with the property "btnMode" the keys that are letters in that language.
    void markLetters(int language);
    /// Fonts and icons that suit keys of that width and height.
    void fitKeys(int width, int height);

    CurrentValueLabel *current = nullptr;
    QLineEdit *edValue = nullptr;
    QPushButton *btn_backspace = nullptr;
    QPushButton *btn_caps = nullptr;
    QPushButton *btn_clear = nullptr;
    QPushButton *btn_enter = nullptr;
    QPushButton *btn_esc = nullptr;
    QPushButton *btn_lang = nullptr;
    QPushButton *btn_lshift = nullptr;
    QPushButton *btn_next = nullptr;
    QPushButton *btn_prev = nullptr;
    QPushButton *btn_rshift = nullptr;
    QPushButton *btn_space = nullptr;
    QPushButton *btn_tab = nullptr;
    QVector<QPushButton *> keys;

private:
    void addRow(QDialog *dialog, int row);
    void takeControlKeys();

    QVBoxLayout *verticalLayout = nullptr;
};

} // namespace Widgets
