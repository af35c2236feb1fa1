#include "widgets/reports/engine/expressions/AggregateSum.h"

#include "widgets/reports/engine/expressions/ValueText.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace LimeReport {

AggregateSample AggregateSample::of(const QVariant &value, Nodes::Quality quality)
{
    AggregateSample sample;
    sample.isGood = quality == Nodes::Quality::Good;
    if (!value.isValid() || quality == Nodes::Quality::Bad)
        return sample;
    const double number = ValueText::toNumber(value);
    if (value.type() == QVariant::DateTime || value.type() == QVariant::Date) {
        sample.kind = Kind::Time;
        sample.number = double(ValueText::toDateTime(value).toMSecsSinceEpoch());
    } else if (std::isnan(number)) {
        sample.kind = Kind::Other;
    } else {
        sample.kind = Kind::Number;
        sample.number = number;
    }
    return sample;
}

void AggregateSum::add(const AggregateSample &sample)
{
    using Kind = AggregateSample::Kind;
    m_isComplete = m_isComplete && sample.isGood && sample.kind != Kind::Nothing;
    if (sample.kind == Kind::Nothing)
        return;
    ++m_counted;
    if (sample.kind == Kind::Other)
        return;
    const double number = sample.number;
    const bool isFirst = m_numbers + m_times == 0;
    m_minimum = isFirst ? number : std::min(m_minimum, number);
    m_maximum = isFirst ? number : std::max(m_maximum, number);
    ++(sample.kind == Kind::Number ? m_numbers : m_times);
    const double sum = m_sum + number;
    m_rest += std::abs(m_sum) >= std::abs(number) ? (m_sum - sum) + number : (number - sum) + m_sum;
    m_sum = sum;
}

AggregateValue AggregateSum::value(Aggregate function) const
{
    AggregateValue told;
    told.quality = m_isComplete ? Nodes::Quality::Good : Nodes::Quality::Uncertain;
    const bool isTime = m_times > 0 && m_numbers == 0;
    const auto extreme = [isTime](double number) {
        return isTime ? QVariant(QDateTime::fromMSecsSinceEpoch(qint64(number))) : QVariant(number);
    };
    if (function == Aggregate::Count) {
        told.value = m_counted;
        told.quality = Nodes::Quality::Good; // tells how many there are
    } else if (function == Aggregate::Minimum && m_numbers + m_times > 0) {
        told.value = extreme(m_minimum);
    } else if (function == Aggregate::Maximum && m_numbers + m_times > 0) {
        told.value = extreme(m_maximum);
    } else if (m_numbers > 0 && m_times == 0) {
        told.value = function == Aggregate::Sum ? sum() : sum() / double(m_numbers);
    }
    return told;
}

} // namespace LimeReport
