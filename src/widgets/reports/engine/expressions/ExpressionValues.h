#pragma once

#include "nodes/values/Quality.h"

#include <QString>
#include <QVariant>

namespace LimeReport {

class ReportScope;

/// What tells the value of an expression.
class ExpressionValues
{
public:
    virtual ~ExpressionValues() = default;

    /// Invalid for no value and errors. `quality` may be null.
    virtual QVariant value(const QString &expression, ReportScope &scope,
                           Nodes::Quality *quality) = 0;
};

} // namespace LimeReport
