#include "widgets/elements/health/HealthPeriodDialog.h"

#include "widgets/dialogs/DialogLook.h"

#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace Widgets {

namespace {

constexpr int longest = 366; // days

} // namespace

HealthPeriodDialog::HealthPeriodDialog(QWidget *parent)
    : BasicDialog(parent),
      m_from(new QDateTimeEdit(this)),
      m_to(new QDateTimeEdit(this)),
      m_trouble(new QLabel(this)),
      m_accept(new QPushButton(QStringLiteral("Показать"), this))
{
    ApplyDialogLook(*this);
    setWindowTitle(QStringLiteral("Период"));
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    for (QPushButton *button : {m_accept, cancel})
        MakeTouchable(*button);
    m_accept->setDefault(true);
    for (QDateTimeEdit *edit : {m_from, m_to}) {
        edit->setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm"));
        edit->setCalendarPopup(true);
        edit->setMinimumSize(220, TouchSize);
        MakeLegible(*edit);
        connect(edit, &QDateTimeEdit::dateTimeChanged, this, &HealthPeriodDialog::check);
    }
    MakeLegible(*m_trouble);
    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("Начало:"), m_from);
    form->addRow(QStringLiteral("Конец:"), m_to);
    for (QWidget *label : {form->labelForField(m_from), form->labelForField(m_to)})
        MakeLegible(*label);
    form->addRow(m_trouble);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_accept);
    buttons->addWidget(cancel);
    form->addRow(buttons);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
}

void HealthPeriodDialog::setPeriod(Nodes::Timestamp from, Nodes::Timestamp to)
{
    m_from->setDateTime(QDateTime::fromMSecsSinceEpoch(from / 1000));
    m_to->setDateTime(QDateTime::fromMSecsSinceEpoch(to / 1000));
    check();
}

HealthPeriod HealthPeriodDialog::period() const
{
    return {HealthPeriod::Free, m_from->dateTime().toMSecsSinceEpoch() * 1000,
            m_to->dateTime().toMSecsSinceEpoch() * 1000};
}

void HealthPeriodDialog::check()
{
    const QDateTime from = m_from->dateTime();
    const QDateTime to = m_to->dateTime();
    QString trouble;
    if (from >= to)
        trouble = QStringLiteral("Конец должен быть позже начала");
    else if (from > QDateTime::currentDateTime())
        trouble = QStringLiteral("Период ещё не начался");
    else if (from.addDays(longest) < to)
        trouble = QStringLiteral("Период не длиннее года");
    m_trouble->setText(trouble);
    m_accept->setEnabled(trouble.isEmpty());
}

} // namespace Widgets
