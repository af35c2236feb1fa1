#pragma once

#include "nodes/values/Quality.h"

#include "widgets/reports/engine/expressions/Aggregate.h"

#include <QVariant>

namespace LimeReport {

/// What one expression gave for one row.
struct AggregateSample
{
    enum class Kind { Nothing, Other, Number, Time };

    static AggregateSample of(const QVariant &value, Nodes::Quality quality);

    Kind kind = Kind::Nothing;
    double number = 0; ///< of Time: milliseconds since the epoch
    bool isGood = true;
};

/// All aggregates of one expression over one range of rows.
class AggregateSum
{
public:
    void add(const AggregateSample &sample);
    AggregateValue value(Aggregate function) const;

private:
    double sum() const { return m_sum + m_rest; }

    qint64 m_counted = 0; // rows with any value
    qint64 m_numbers = 0;
    qint64 m_times = 0;
    double m_sum = 0;
    double m_rest = 0; // of Neumaier's summation: millions of rows of unlike size lose nothing
    double m_minimum = 0;
    double m_maximum = 0;
    bool m_isComplete = true;
};

} // namespace LimeReport
