#include "editor/properties/values/SecretWindow.h"

#include "nodes/auth/systemAuthentication.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace Editor {

SecretWindow::SecretWindow(QWidget *parent)
    : QDialog(parent),
      m_password(new QLineEdit(this)),
      m_again(new QLineEdit(this)),
      m_hint(new QLabel(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Новый пароль"));
    auto *buttons = new QDialogButtonBox(this);
    m_take = buttons->addButton(QStringLiteral("Задать"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    auto *layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("Пароль:"), m_password);
    layout->addRow(QStringLiteral("Ещё раз:"), m_again);
    layout->addRow(m_hint);
    layout->addRow(buttons);
    for (QLineEdit *line : {m_password, m_again}) {
        line->setEchoMode(QLineEdit::Password);
        connect(line, &QLineEdit::textChanged, this, &SecretWindow::check);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

SecretWindow::~SecretWindow() = default;

QString SecretWindow::hash() const
{
    return QString::fromStdString(
        Nodes::systemAuthentication::HashPassword(m_password->text().toStdString()));
}

void SecretWindow::check()
{
    const bool isSame = m_password->text() == m_again->text();
    const bool isEmpty = m_password->text().isEmpty();
    m_hint->setText(isEmpty  ? QStringLiteral("Введите пароль дважды.")
                    : isSame ? QString()
                             : QStringLiteral("Пароли не совпадают."));
    m_take->setEnabled(isSame && !isEmpty);
}

} // namespace Editor
