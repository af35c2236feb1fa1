#include "editor/users/PasswordDialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int weakLength = 8;

QLineEdit *passwordLine(QWidget *parent, const char *name)
{
    auto *line = new QLineEdit(parent);
    line->setObjectName(QLatin1String(name));
    line->setEchoMode(QLineEdit::Password);
    return line;
}

} // namespace

PasswordDialog::PasswordDialog(const QString &user, QWidget *parent)
    : QDialog(parent),
      m_first(passwordLine(this, "first")),
      m_second(passwordLine(this, "second")),
      m_verdict(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("Пароль пользователя %1").arg(user));
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("Задать"));
    m_buttons->button(QDialogButtonBox::Cancel)->setText(tr("Отмена"));
    m_verdict->setWordWrap(true);
    auto *form = new QFormLayout;
    form->addRow(tr("Новый пароль"), m_first);
    form->addRow(tr("Ещё раз"), m_second);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(m_verdict);
    layout->addWidget(m_buttons);
    setMinimumWidth(420);
    for (QLineEdit *line : {m_first, m_second})
        connect(line, &QLineEdit::textChanged, this, &PasswordDialog::check);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    check();
}

PasswordDialog::~PasswordDialog() = default;

QString PasswordDialog::password() const
{
    return m_first->text();
}

void PasswordDialog::check()
{
    const bool isSame = m_first->text() == m_second->text();
    QString verdict;
    if (m_first->text().isEmpty())
        verdict = tr("Впишите пароль.");
    else if (!isSame)
        verdict = tr("Пароли различаются.");
    else if (m_first->text().size() < weakLength)
        verdict = tr("Пароль короче %1 знаков: его легко подобрать.").arg(weakLength);
    m_verdict->setText(verdict);
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(isSame && !m_first->text().isEmpty());
}

} // namespace Editor
