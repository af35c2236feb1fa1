#include "widgets/events/details/AlarmLimitsDialog.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/elements/health/WhatIfDialog.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/TunedAlarm.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/signals/BasicSignal.h"

#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <cmath>

namespace Widgets {

namespace {

using Tuning = Nodes::AlarmTuning;

constexpr int margin = 16;
constexpr int gap = 8;
constexpr int editWidth = 144;
constexpr int msInSecond = 1000;

const std::array<const char *, 4> names{"Предел", "Зона нечувствительности",
                                        "Задержка возникновения, с", "Задержка снятия, с"};

std::optional<double> numberOf(const Tuning &tuning, int number)
{
    const auto seconds = [](const std::optional<int> &delay) {
        return delay ? std::optional<double>(double(*delay) / msInSecond) : std::nullopt;
    };
    switch (number) {
    case 0:
        return tuning.limit;
    case 1:
        return tuning.deadband;
    case 2:
        return seconds(tuning.onDelay);
    default:
        return seconds(tuning.offDelay);
    }
}

/// What no delay can be stays out of range.
int milliseconds(double seconds)
{
    return qRound(qBound(-2e9, seconds * msInSecond, 2e9));
}

void setNumber(Tuning &tuning, int number, double value)
{
    switch (number) {
    case 0:
        tuning.limit = value;
        break;
    case 1:
        tuning.deadband = value;
        break;
    case 2:
        tuning.onDelay = milliseconds(value);
        break;
    default:
        tuning.offDelay = milliseconds(value);
        break;
    }
}

QString text(double value)
{
    return QString::number(value, 'g', 12);
}

QLabel *makeLabel(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    MakeLegible(*label);
    return label;
}

/// What the project says: of numbers that nobody changed, what counts.
Tuning projectOf(const Nodes::systemAlarming &alarming, const Nodes::NodeLink &alarm)
{
    Tuning project = alarming.GetTuning(alarm);
    for (const Nodes::TunedAlarm &tuned : alarming.GetTuned()) {
        if (tuned.alarm != alarm)
            continue;
        project.limit = tuned.project.limit ? tuned.project.limit : project.limit;
        project.deadband = tuned.project.deadband ? tuned.project.deadband : project.deadband;
        project.onDelay = tuned.project.onDelay ? tuned.project.onDelay : project.onDelay;
        project.offDelay = tuned.project.offDelay ? tuned.project.offDelay : project.offDelay;
    }
    return project;
}

} // namespace

AlarmLimitsDialog::AlarmLimitsDialog(QWidget *parent)
    : BasicDialog(parent),
      m_subject(makeLabel(this)),
      m_range(makeLabel(this)),
      m_message(makeLabel(this)),
      m_apply(new QPushButton(QStringLiteral("Применить"), this)),
      m_revert(new QPushButton(QStringLiteral("Вернуть по проекту"), this)),
      m_whatIf(new QPushButton(QStringLiteral("Что если…"), this))
{
    setWindowTitle(QStringLiteral("Пределы и задержки"));
    ApplyDialogLook(*this);
    QFont bold = m_subject->font();
    bold.setBold(true);
    m_subject->setFont(bold);
    m_subject->setWordWrap(true);
    m_message->setObjectName(QStringLiteral("message"));
    m_message->setWordWrap(true);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setSpacing(gap);
    grid->addWidget(m_subject, 0, 0, 1, 4);
    grid->addWidget(m_range, 1, 0, 1, 4);
    for (int number = 0; number < NumberCount; ++number)
        buildRow(*grid, number);
    grid->addWidget(m_message, NumberCount + 2, 0, 1, 4);
    buildButtons(*grid, NumberCount + 3);
    grid->setColumnStretch(0, 1);
}

void AlarmLimitsDialog::buildRow(QGridLayout &grid, int number)
{
    Row &row = m_rows[std::size_t(number)];
    row.name = makeLabel(this);
    row.name->setText(QString::fromUtf8(names[std::size_t(number)]));
    row.edit = new QLineEdit(this);
    row.edit->setObjectName(QStringLiteral("number%1").arg(number));
    row.edit->setMinimumSize(editWidth, TouchSize);
    row.edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    MakeLegible(*row.edit);
    row.numpad = new QPushButton(this);
    row.numpad->setFixedSize(TouchSize, TouchSize);
    row.numpad->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    row.numpad->setIconSize({28, 28});
    row.numpad->setToolTip(QStringLiteral("Цифры"));
    row.numpad->setAutoDefault(false);
    row.project = makeLabel(this);
    grid.addWidget(row.name, number + 2, 0);
    grid.addWidget(row.edit, number + 2, 1);
    grid.addWidget(row.numpad, number + 2, 2);
    grid.addWidget(row.project, number + 2, 3);
    connect(row.numpad, &QPushButton::clicked, this, [this, number] { openNumpad(number); });
}

void AlarmLimitsDialog::buildButtons(QGridLayout &grid, int row)
{
    auto *close = new QPushButton(QStringLiteral("Закрыть"), this);
    m_apply->setObjectName(QStringLiteral("apply"));
    m_revert->setObjectName(QStringLiteral("revert"));
    auto *line = new QHBoxLayout;
    line->setSpacing(gap);
    line->addWidget(m_revert);
    line->addWidget(m_whatIf);
    line->addStretch();
    line->addWidget(m_apply);
    line->addWidget(close);
    for (QPushButton *button : {m_revert, m_whatIf, m_apply, close}) {
        button->setAutoDefault(false);
        MakeTouchable(*button);
    }
    grid.addLayout(line, row, 0, 1, 4);
    connect(m_apply, &QPushButton::clicked, this, &AlarmLimitsDialog::apply);
    connect(m_revert, &QPushButton::clicked, this, &AlarmLimitsDialog::revert);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_whatIf, &QPushButton::clicked, this, [this] {
        const QWidget *near = parentWidget();
        const Nodes::NodeLink alarm = m_alarm;
        accept();
        WhatIfDialog::open(alarm, near);
    });
}

void AlarmLimitsDialog::setAlarm(const Nodes::NodeLink &alarm)
{
    m_alarm = alarm;
    const auto *node = dynamic_cast<const Nodes::BasicAlarm *>(alarm.GetNode());
    m_subject->setText(node ? QString::fromStdString(node->GetText()) : QString());
    const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
    const bool hasRange = signal && signal->GetMaximum() > signal->GetMinimum();
    const Nodes::systemAlarming *alarming = DesktopContext::alarming();
    m_range->setVisible(hasRange && alarming && alarming->GetTuning(alarm).limit);
    if (hasRange)
        m_range->setText(QStringLiteral("Диапазон сигнала: от %1 до %2 %3")
                             .arg(text(signal->GetMinimum()), text(signal->GetMaximum()),
                                  QString::fromStdString(signal->GetUnit())));
    showTuning();
    const bool mayChange = HasPrivilege(Nodes::PrivilegeConfigure, alarm.GetNode());
    for (const Row &row : m_rows) {
        row.edit->setEnabled(mayChange);
        row.numpad->setEnabled(mayChange);
    }
    m_apply->setEnabled(mayChange);
    m_whatIf->setEnabled(WhatIfDialog::canOpen(alarm));
    m_revert->setEnabled(mayChange && m_revert->isEnabled());
    m_message->setText(mayChange ? QString() : QStringLiteral("Нет права: настройка"));
}

void AlarmLimitsDialog::showTuning()
{
    const Nodes::systemAlarming *alarming = DesktopContext::alarming();
    if (!alarming)
        return;
    m_now = alarming->GetTuning(m_alarm);
    const Tuning project = projectOf(*alarming, m_alarm);
    for (int number = 0; number < NumberCount; ++number) {
        const Row &row = m_rows[std::size_t(number)];
        const std::optional<double> now = numberOf(m_now, number);
        for (QWidget *part :
             {static_cast<QWidget *>(row.name), static_cast<QWidget *>(row.edit),
              static_cast<QWidget *>(row.numpad), static_cast<QWidget *>(row.project)})
            part->setVisible(now.has_value());
        row.edit->setText(now ? text(*now) : QString());
        const double planned = numberOf(project, number).value_or(0);
        row.project->setText(QStringLiteral("по проекту %1").arg(text(planned)));
        QFont font = row.project->font();
        font.setBold(now && *now != planned); // it deviates
        row.project->setFont(font);
    }
    m_revert->setEnabled(project != m_now);
}

bool AlarmLimitsDialog::read(Tuning &tuning)
{
    for (int number = 0; number < NumberCount; ++number) {
        const std::optional<double> now = numberOf(m_now, number);
        const QString written = m_rows[std::size_t(number)].edit->text().trimmed();
        if (!now || written == text(*now))
            continue;
        bool isNumber = false;
        const double value = QString(written).replace(',', '.').toDouble(&isNumber);
        if (!isNumber || !std::isfinite(value)) {
            m_message->setText(QStringLiteral("«%1»: «%2» — не число")
                                   .arg(QString::fromUtf8(names[std::size_t(number)]), written));
            return false;
        }
        setNumber(tuning, number, value);
    }
    return true;
}

void AlarmLimitsDialog::apply()
{
    Tuning tuning;
    if (!read(tuning))
        return;
    Nodes::systemAlarming *alarming = DesktopContext::alarming();
    if (!alarming || tuning.isEmpty()) {
        m_message->setText(QStringLiteral("Ничего не изменено"));
        return;
    }
    tell(alarming->Tune(m_alarm, tuning));
}

void AlarmLimitsDialog::revert()
{
    if (Nodes::systemAlarming *alarming = DesktopContext::alarming())
        tell(alarming->RevertTuning(m_alarm));
}

void AlarmLimitsDialog::tell(const Nodes::Result &result)
{
    if (result) {
        showTuning();
        m_message->setText(QStringLiteral("Принято, действует с этого момента"));
        return;
    }
    const std::string &detail = result.GetDetail();
    m_message->setText(
        QStringLiteral("Не изменено: ") +
        QString::fromStdString(detail.empty() ? result.GetResultTranslated() : detail));
}

void AlarmLimitsDialog::openNumpad(int number)
{
    QLineEdit *edit = m_rows[std::size_t(number)].edit;
    DialogRequest request;
    request.parent = this;
    request.element = edit;
    const OwnedDialog<VirtualNumpad> numpad(request);
    numpad->setText(edit->text());
    const QPointer<AlarmLimitsDialog> self = this;
    if (numpad->exec() == QDialog::Accepted && numpad && self)
        edit->setText(numpad->text());
}

} // namespace Widgets
