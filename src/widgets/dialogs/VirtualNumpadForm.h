#pragma once

#include <QRect>
#include <QVector>

class QDialog;
class QGridLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace Widgets {

class CurrentValueLabel;

/// Widgets of the on-screen numpad, children of the dialog they are set up on.
class VirtualNumpadForm
{
public:
    void setupUi(QDialog *dialog);
    void retranslateUi();

    CurrentValueLabel *current = nullptr;
    QLineEdit *lineEdit = nullptr;
    QPushButton *keyDot = nullptr;
    QPushButton *keyMinus = nullptr;
    QPushButton *keyBackspace = nullptr;
    QPushButton *keyEnter = nullptr;
    QPushButton *keyCancel = nullptr;
    QVector<QPushButton *> digits; ///< key0 to key9

private:
    QPushButton *addKey(const QString &name, const QRect &cells);

    QVBoxLayout *verticalLayout = nullptr;
    QGridLayout *gridLayout = nullptr;
};

} // namespace Widgets
