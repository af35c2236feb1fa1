#include "widgets/dialogs/VirtualNumpadForm.h"

#include "widgets/dialogs/CurrentValueLabel.h"
#include "widgets/dialogs/KeyButton.h"

#include <QCoreApplication>
#include <QDialog>
#include <QGridLayout>
#include <QLineEdit>

namespace Widgets {

namespace {

constexpr int spacing = 6;
constexpr int editHeight = 56;
constexpr int fontPixels = 24;
constexpr QSize keySize(76, 64);

QString translated(const char *text)
{
    return QCoreApplication::translate("VirtualNumpad", text);
}

// Cells of a digit in the grid, the way calculators have them: 7 8 9 on top, 0 below.
QRect digitCells(int digit)
{
    return digit == 0 ? QRect(1, 3, 1, 1) : QRect((digit - 1) % 3, 2 - (digit - 1) / 3, 1, 1);
}

} // namespace

void VirtualNumpadForm::setupUi(QDialog *dialog)
{
    lineEdit = new QLineEdit(dialog);
    lineEdit->setObjectName(QStringLiteral("lineEdit"));
    lineEdit->setMinimumHeight(editHeight);
    lineEdit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QFont font = dialog->font();
    font.setPixelSize(fontPixels);
    lineEdit->setFont(font);
    verticalLayout = new QVBoxLayout(dialog);
    verticalLayout->setObjectName(QStringLiteral("verticalLayout"));
    verticalLayout->setSpacing(spacing);
    current = new CurrentValueLabel(dialog);
    verticalLayout->addWidget(current);
    verticalLayout->addWidget(lineEdit);
    gridLayout = new QGridLayout;
    gridLayout->setObjectName(QStringLiteral("gridLayout"));
    gridLayout->setSpacing(spacing);
    verticalLayout->addLayout(gridLayout, 1);
    for (int digit = 0; digit < 10; ++digit)
        digits.append(addKey(QStringLiteral("key%1").arg(digit), digitCells(digit)));
    keyMinus = addKey(QStringLiteral("keyMinus"), QRect(0, 3, 1, 1));
    keyDot = addKey(QStringLiteral("keyDot"), QRect(2, 3, 1, 1));
    keyBackspace = addKey(QStringLiteral("keyBackspace"), QRect(3, 0, 1, 1));
    keyBackspace->setAutoRepeat(true);
    keyCancel = addKey(QStringLiteral("keyCancel"), QRect(3, 1, 1, 1));
    keyEnter = addKey(QStringLiteral("keyEnter"), QRect(3, 2, 1, 2));
    retranslateUi();
}

QPushButton *VirtualNumpadForm::addKey(const QString &name, const QRect &cells)
{
    auto *key = new KeyButton(lineEdit->parentWidget());
    key->setObjectName(name);
    key->setMinimumSize(keySize);
    key->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    key->setFont(lineEdit->font());
    gridLayout->addWidget(key, cells.y(), cells.x(), cells.height(), cells.width());
    return key;
}

void VirtualNumpadForm::retranslateUi()
{
    for (int digit = 0; digit < digits.size(); ++digit)
        digits[digit]->setText(QString::number(digit));
    keyDot->setText(QStringLiteral("."));
    keyMinus->setText(QStringLiteral("+/-"));
    keyBackspace->setText(QStringLiteral("←"));
    keyEnter->setText(translated("Ввод"));
    keyCancel->setText(translated("Отм"));
    for (QPushButton *key : {keyMinus, keyBackspace, keyEnter, keyCancel})
        key->setProperty("isControlKey", true);
}

} // namespace Widgets
