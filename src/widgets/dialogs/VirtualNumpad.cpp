#include "widgets/dialogs/VirtualNumpad.h"

#include "widgets/dialogs/CurrentValueLabel.h"
#include "widgets/dialogs/VirtualNumpadForm.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegExpValidator>

namespace Widgets {

VirtualNumpad::VirtualNumpad(QWidget *parent)
    : BasicDialog(parent), m_form(std::make_unique<VirtualNumpadForm>())
{
    m_form->setupUi(this);
    setWindowTitle(tr("Ввод значения"));
    connectKeys();
    const QRegExp number(QStringLiteral("^(-?)(0|([1-9][0-9]*))(\\.[0-9]+)?$"), Qt::CaseSensitive);
    setValidator(new QRegExpValidator(number, this));
    m_form->lineEdit->setFocus();
}

VirtualNumpad::~VirtualNumpad() = default;

void VirtualNumpad::connectKeys()
{
    QVector<QPushButton *> keys = m_form->digits;
    keys << m_form->keyDot << m_form->keyMinus << m_form->keyBackspace << m_form->keyEnter;
    for (QPushButton *key : qAsConst(keys))
        connect(key, &QPushButton::clicked, this, &VirtualNumpad::keyPress);
    connect(m_form->keyCancel, &QPushButton::clicked, this, &VirtualNumpad::on_keyCancel_clicked);
    connect(m_form->lineEdit, &QLineEdit::returnPressed, this,
            &VirtualNumpad::on_lineEdit_returnPressed);
    connect(m_form->lineEdit, &QLineEdit::inputRejected, this, &VirtualNumpad::inputRejected);
    connect(m_form->lineEdit, &QLineEdit::textChanged, this, &VirtualNumpad::updateEnter);
}

void VirtualNumpad::setValue(double value)
{
    m_form->lineEdit->setText(QString::number(value, 'g', 6));
}

double VirtualNumpad::getValue()
{
    return m_form->lineEdit->text().toDouble();
}

void VirtualNumpad::setText(const QString &number)
{
    m_form->lineEdit->setText(number);
}

QString VirtualNumpad::text() const
{
    return m_form->lineEdit->text();
}

void VirtualNumpad::setEchoMode(QLineEdit::EchoMode mode)
{
    m_form->lineEdit->setEchoMode(mode);
}

void VirtualNumpad::setValidator(QValidator const *validator)
{
    m_form->lineEdit->setValidator(validator);
    updateEnter();
}

void VirtualNumpad::showCurrent(const QString &text)
{
    m_form->current->showValue(text);
}

void VirtualNumpad::showHint(const QString &hint)
{
    m_form->current->showHint(hint);
}

void VirtualNumpad::updateEnter()
{
    showHint(QString());
    m_form->keyEnter->setEnabled(m_form->lineEdit->hasAcceptableInput());
}

void VirtualNumpad::keyPress()
{
    auto *button = qobject_cast<QPushButton *>(sender());
    const int digit = m_form->digits.indexOf(button);
    int key = Qt::Key_Return;
    QString text;
    if (digit >= 0) {
        key = Qt::Key_0 + digit;
        text = QString::number(digit);
    } else if (button == m_form->keyMinus) {
        key = Qt::Key_Minus;
        text = QStringLiteral("-");
    } else if (button == m_form->keyDot) {
        key = Qt::Key_Period;
        text = QStringLiteral(".");
    } else if (button == m_form->keyBackspace) {
        key = Qt::Key_Backspace;
    }
    QCoreApplication::postEvent(
        m_form->lineEdit, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text, false, 1));
}

void VirtualNumpad::on_keyCancel_clicked()
{
    reject();
}

void VirtualNumpad::on_lineEdit_returnPressed()
{
    accept();
}

} // namespace Widgets
