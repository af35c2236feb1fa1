#include "widgets/elements/health/HealthBar.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/elements/health/ChoiceButtons.h"
#include "widgets/elements/health/HealthText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace Widgets {

HealthBar::HealthBar(QWidget *parent)
    : QWidget(parent),
      m_periods(new ChoiceButtons({{HealthPeriod::Day, QStringLiteral("Сутки")},
                                   {HealthPeriod::Week, QStringLiteral("Неделя")},
                                   {HealthPeriod::Month, QStringLiteral("Месяц")},
                                   {HealthPeriod::Free, QStringLiteral("Период…")}},
                                  this)),
      m_interval(new QLabel(this)),
      m_progress(new QLabel(this)),
      m_sign(new QLabel(this)),
      m_overall(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(m_periods);
    connect(m_periods, &ChoiceButtons::pressed, this,
            [this](int kind) { emit periodChosen(HealthPeriod::Kind(kind)); });
    for (QLabel *label : {m_interval, m_progress, m_overall})
        MakeLegible(*label);
    QFont bold = m_overall->font();
    bold.setBold(true);
    m_overall->setFont(bold);
    layout->addSpacing(8);
    layout->addWidget(m_interval);
    layout->addWidget(m_progress);
    layout->addStretch();
    layout->addWidget(m_sign);
    layout->addWidget(m_overall);
    layout->addSpacing(8);
    m_refresh = addButton(QStringLiteral("Обновить"));
    m_export = addButton(QStringLiteral("CSV…"));
    connect(m_refresh, &QPushButton::clicked, this, &HealthBar::onRefresh);
    connect(m_export, &QPushButton::clicked, this, &HealthBar::exportPressed);
    setOverall(Nodes::HealthVerdict::None);
    setExportable(false);
}

QPushButton *HealthBar::addButton(const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setAutoDefault(false);
    MakeTouchable(*button);
    layout()->addWidget(button);
    return button;
}

void HealthBar::setPeriod(HealthPeriod::Kind kind)
{
    m_periods->choose(kind);
}

void HealthBar::setInterval(const QString &text)
{
    m_interval->setText(text);
}

void HealthBar::setOverall(Nodes::HealthVerdict verdict, bool isTelling)
{
    constexpr int size = 22;
    const QString word = isTelling || verdict != Nodes::HealthVerdict::None
                             ? HealthText::verdict(verdict)
                             : QStringLiteral("мало данных");
    m_overall->setText(word.isEmpty() ? QString() : QStringLiteral("Оценка: ") + word);
    m_sign->setPixmap(HealthText::sign(verdict, size));
}

void HealthBar::setProgress(int percent)
{
    m_isBusy = percent >= 0;
    m_progress->setText(m_isBusy ? QStringLiteral("· считается, %1 %").arg(percent) : QString());
    m_refresh->setText(m_isBusy ? QStringLiteral("Отмена") : QStringLiteral("Обновить"));
}

void HealthBar::setExportable(bool on)
{
    m_export->setEnabled(on);
}

void HealthBar::onRefresh()
{
    if (m_isBusy)
        emit cancelPressed();
    else
        emit refreshPressed();
}

} // namespace Widgets
