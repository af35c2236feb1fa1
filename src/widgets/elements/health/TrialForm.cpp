#include "widgets/elements/health/TrialForm.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/elements/health/NumberField.h"

#include <QGridLayout>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace Widgets {

namespace {

constexpr double farthest = 1e12;
constexpr double longestDelay = 86400; // s

/// A step of 1, 2 or 5 times a power of ten, some two hundredth of the span.
double stepFor(double span)
{
    if (!(span > 0))
        return 1;
    const double rough = span / 200;
    const double power = std::pow(10, std::floor(std::log10(rough)));
    return (rough / power >= 5 ? 5 : rough / power >= 2 ? 2 : 1) * power;
}

} // namespace

TrialForm::TrialForm(QWidget *parent) : QWidget(parent)
{
    new QGridLayout(this);
    layout()->setContentsMargins(0, 0, 0, 0);
    m_limit = add(QStringLiteral("Предел"));
    m_deadband = add(QStringLiteral("Зона"));
    m_onDelay = add(QStringLiteral("Задержка"));
    m_offDelay = add(QStringLiteral("Задержка возврата"));
    for (NumberField *field : {m_onDelay, m_offDelay}) {
        field->setRange(0, longestDelay, 1, 1);
        field->setUnit(QStringLiteral("с"));
    }
}

NumberField *TrialForm::add(const QString &name)
{
    auto *grid = static_cast<QGridLayout *>(layout());
    const int column = grid->columnCount();
    auto *label = new QLabel(name, this);
    MakeLegible(*label);
    auto *field = new NumberField(this);
    grid->addWidget(label, 0, column);
    grid->addWidget(field, 1, column);
    connect(field, &NumberField::valueChanged, this, &TrialForm::take);
    return field;
}

void TrialForm::setSignal(double minimum, double maximum, const QString &unit)
{
    const double step = stepFor(maximum - minimum);
    const int decimals = std::clamp(1 - int(std::floor(std::log10(step))), 1, 6);
    m_limit->setRange(-farthest, farthest, decimals, step);
    m_deadband->setRange(0, farthest, decimals, step);
    m_limit->setUnit(unit);
    m_deadband->setUnit(unit);
}

void TrialForm::setTuning(const Nodes::AlarmTuning &tuning)
{
    m_tuning = tuning;
    m_limit->setEnabled(tuning.limit.has_value());
    m_deadband->setEnabled(tuning.deadband.has_value());
    m_limit->setValue(tuning.limit.value_or(0));
    m_deadband->setValue(tuning.deadband.value_or(0));
    m_onDelay->setValue(tuning.onDelay.value_or(0) / 1000.0);
    m_offDelay->setValue(tuning.offDelay.value_or(0) / 1000.0);
}

void TrialForm::take()
{
    if (m_tuning.limit)
        m_tuning.limit = m_limit->value();
    if (m_tuning.deadband)
        m_tuning.deadband = m_deadband->value();
    m_tuning.onDelay = int(std::lround(m_onDelay->value() * 1000));
    m_tuning.offDelay = int(std::lround(m_offDelay->value() * 1000));
    emit changed(m_tuning);
}

} // namespace Widgets
