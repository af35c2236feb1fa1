#pragma once

#include "nodes/values/Quality.h"

#include <QString>
#include <QVariant>

namespace LimeReport {

enum class Aggregate { Sum, Count, Average, Minimum, Maximum };

/// SUM(expression, "band") and so on.
struct AggregateRequest
{
    Aggregate function = Aggregate::Sum;
    QString expression; ///< evaluated for each row: "$D{a.b}" or "$S{...}"; "": rows are counted
    QString band;

    bool operator==(const AggregateRequest &other) const
    {
        return function == other.function && expression == other.expression && band == other.band;
    }
};

/// Uncertain: some of the rows had no good value and are not in it.
struct AggregateValue
{
    QVariant value;
    Nodes::Quality quality = Nodes::Quality::Good;
    QString error; ///< what is wrong with the request
};

} // namespace LimeReport
