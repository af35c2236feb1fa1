#include "widgets/reports/display/ReportIntervalDialog.h"

#include "widgets/dialogs/DialogLook.h"

#include <QBoxLayout>
#include <QCalendarWidget>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

constexpr int margin = 16;
constexpr int gap = 8;
constexpr int widestTitle = 440;
constexpr Nodes::Timestamp millisecond = 1000;

constexpr std::pair<Nodes::enReportPeriod, const char *> periods[] = {
    {Nodes::PeriodShift, "Смена"},
    {Nodes::PeriodDay, "Сутки"},
    {Nodes::PeriodWeek, "Неделя"},
    {Nodes::PeriodMonth, "Месяц"},
    {Nodes::PeriodFree, "Произвольный период"}};

QDateTime asDateTime(Nodes::Timestamp moment)
{
    return QDateTime::fromMSecsSinceEpoch(moment / millisecond);
}

} // namespace

ReportIntervalDialog::ReportIntervalDialog(QWidget *parent) : BasicDialog(parent)
{
    setWindowTitle(tr("Интервал"));
    build();
}

QPushButton *ReportIntervalDialog::makeButton(const QString &text, const char *name, int width)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    MakeTouchable(*button);
    button->setAutoDefault(false);
    if (width > 0)
        button->setFixedWidth(width);
    return button;
}

QWidget *ReportIntervalDialog::makeSteps()
{
    auto *steps = new QWidget(this);
    auto *back = makeButton(QStringLiteral("‹"), "back", TouchSize);
    back->setToolTip(tr("Предыдущий"));
    m_forward = makeButton(QStringLiteral("›"), "forward", TouchSize);
    m_forward->setToolTip(tr("Следующий"));
    m_current = makeButton(tr("Текущий"), "current", 0);
    m_title = new QLabel(steps);
    m_title->setObjectName(QStringLiteral("title"));
    m_title->setAlignment(Qt::AlignCenter);
    m_title->setMinimumWidth(widestTitle);
    MakeLegible(*m_title);
    auto *row = new QHBoxLayout(steps);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(back);
    row->addWidget(m_title, 1);
    row->addWidget(m_forward);
    row->addWidget(m_current);
    connect(back, &QPushButton::clicked, this, &ReportIntervalDialog::stepBack);
    connect(m_forward, &QPushButton::clicked, this, &ReportIntervalDialog::stepForward);
    connect(m_current, &QPushButton::clicked, this, &ReportIntervalDialog::stepToNow);
    return steps;
}

QWidget *ReportIntervalDialog::makeFree()
{
    auto *free = new QWidget(this);
    auto *form = new QFormLayout(free);
    form->setContentsMargins(0, 0, 0, 0);
    form->setSpacing(gap);
    const auto add = [&](const QString &text, const char *name) {
        auto *edit = new QDateTimeEdit(free);
        edit->setObjectName(QLatin1String(name));
        edit->setDisplayFormat(QStringLiteral("dd.MM.yyyy HH:mm"));
        edit->setCalendarPopup(true);
        edit->calendarWidget()->setFirstDayOfWeek(Qt::Monday);
        edit->setMinimumHeight(TouchSize);
        MakeLegible(*edit);
        auto *label = new QLabel(text, free);
        MakeLegible(*label);
        label->setBuddy(edit);
        form->addRow(label, edit);
        connect(edit, &QDateTimeEdit::dateTimeChanged, this, &ReportIntervalDialog::onEdited);
        return edit;
    };
    m_from = add(tr("С"), "from");
    m_to = add(tr("По"), "to");
    return free;
}

void ReportIntervalDialog::build()
{
    m_period = new QComboBox(this);
    m_period->setObjectName(QStringLiteral("period"));
    m_period->setMinimumHeight(TouchSize);
    m_period->setItemDelegate(new QStyledItemDelegate(m_period)); // heeds the items' size hints
    MakeLegible(*m_period);
    for (const auto &[period, text] : periods) {
        m_period->addItem(QString::fromUtf8(text), int(period));
        m_period->setItemData(m_period->count() - 1, QSize(TouchSize, TouchSize), Qt::SizeHintRole);
    }
    m_fault = new QLabel(tr("Конец раньше начала: исправьте одно из двух."), this);
    m_fault->setObjectName(QStringLiteral("fault"));
    MakeLegible(*m_fault);
    m_ok = makeButton(tr("ОК"), "ok", 0);
    m_ok->setDefault(true);
    auto *cancel = makeButton(tr("Отмена"), "cancel", 0);
    m_steps = makeSteps();
    m_free = makeFree();
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok);
    buttons->addWidget(cancel);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(gap);
    for (QWidget *part :
         {static_cast<QWidget *>(m_period), m_steps, m_free, static_cast<QWidget *>(m_fault)})
        column->addWidget(part);
    column->addStretch();
    column->addLayout(buttons);
    connect(m_period, QOverload<int>::of(&QComboBox::activated), this,
            &ReportIntervalDialog::onPeriodChosen);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void ReportIntervalDialog::setShifts(const Nodes::ShiftPlan &shifts)
{
    m_shifts = shifts;
}

void ReportIntervalDialog::setChoice(const ReportChoice &choice, Nodes::Timestamp now)
{
    m_choice = choice;
    m_now = now;
    m_period->setCurrentIndex(m_period->findData(int(choice.period)));
    look(choice.spanAt(now, m_shifts));
}

ReportChoice ReportIntervalDialog::choice() const
{
    return m_choice;
}

void ReportIntervalDialog::onPeriodChosen()
{
    // What was looked at is looked at in other lengths; a free period begins as it was.
    m_choice.period = Nodes::enReportPeriod(m_period->currentData().toInt());
    if (m_choice.period == Nodes::PeriodFree)
        return look(m_choice.span);
    look(Nodes::PeriodAt(m_choice.period, std::min(m_choice.span.begin, m_now), m_shifts));
}

void ReportIntervalDialog::stepBack()
{
    look(Nodes::PeriodBefore(m_choice.period, m_choice.span, m_shifts));
}

void ReportIntervalDialog::stepForward()
{
    look(Nodes::PeriodAfter(m_choice.period, m_choice.span, m_shifts));
}

void ReportIntervalDialog::stepToNow()
{
    look(Nodes::PeriodAt(m_choice.period, m_now, m_shifts));
}

void ReportIntervalDialog::onEdited()
{
    look({m_from->dateTime().toMSecsSinceEpoch() * millisecond,
          m_to->dateTime().toMSecsSinceEpoch() * millisecond});
}

void ReportIntervalDialog::look(const Nodes::ReportSpan &span)
{
    m_choice.span = span;
    m_choice.isCurrent = m_choice.period != Nodes::PeriodFree &&
                         span == Nodes::PeriodAt(m_choice.period, m_now, m_shifts);
    refresh();
}

void ReportIntervalDialog::refresh()
{
    const bool isFree = m_choice.period == Nodes::PeriodFree;
    m_steps->setVisible(!isFree);
    m_free->setVisible(isFree);
    const QSignalBlocker from(m_from);
    const QSignalBlocker to(m_to);
    m_from->setDateTime(asDateTime(m_choice.span.begin));
    m_to->setDateTime(asDateTime(m_choice.span.end));
    m_title->setText(
        QString::fromStdString(Nodes::PeriodTitle(m_choice.period, m_choice.span, m_shifts)));
    m_forward->setEnabled(m_choice.span.end <= m_now);
    m_current->setEnabled(!m_choice.isCurrent);
    m_fault->setVisible(isFree && m_choice.span.IsEmpty());
    m_ok->setEnabled(!m_choice.span.IsEmpty());
}

} // namespace Widgets
