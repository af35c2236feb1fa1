#include "widgets/charts/overlay/PastPeriodDialog.h"

#include "widgets/dialogs/DialogLook.h"

#include <QDateTimeEdit>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace Widgets {

namespace {

const QString format = QStringLiteral("dd.MM.yyyy HH:mm:ss");

} // namespace

PastPeriodDialog::PastPeriodDialog(QWidget *parent)
    : BasicDialog(parent),
      m_present(new QLabel(this)),
      m_edit(new QDateTimeEdit(this)),
      m_accept(new QPushButton(QStringLiteral("Наложить"), this))
{
    ApplyDialogLook(*this);
    setWindowTitle(QStringLiteral("Прошлый период"));
    auto *cancel = new QPushButton(QStringLiteral("Отмена"), this);
    for (QPushButton *button : {m_accept, cancel})
        MakeTouchable(*button);
    m_accept->setDefault(true);
    m_edit->setDisplayFormat(format);
    m_edit->setCalendarPopup(true);
    m_edit->setMinimumHeight(TouchSize);
    MakeLegible(*m_edit);
    MakeLegible(*m_present);
    auto *form = new QFormLayout(this);
    form->addRow(QStringLiteral("Начало прошлого периода:"), m_edit);
    form->addRow(QStringLiteral("Встанет на время:"), m_present);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_accept);
    buttons->addWidget(cancel);
    form->addRow(buttons);
    connect(m_edit, &QDateTimeEdit::dateTimeChanged, this, &PastPeriodDialog::check);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
    connect(this, &QDialog::accepted, this,
            [this] { emit chosen(double(begin().msecsTo(m_presentBegin))); });
}

void PastPeriodDialog::setPresent(const QDateTime &begin)
{
    m_presentBegin = begin;
    m_present->setText(begin.toString(format));
    m_edit->setDateTime(begin.addDays(-1));
    check();
}

QDateTime PastPeriodDialog::begin() const
{
    return m_edit->dateTime();
}

void PastPeriodDialog::check()
{
    m_accept->setEnabled(begin() < m_presentBegin);
}

} // namespace Widgets
