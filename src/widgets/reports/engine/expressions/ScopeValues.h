#pragma once

#include "nodes/values/Quality.h"

#include <QString>
#include <QVariant>

namespace LimeReport {

class ReportScope;

/// A value of a scope by the name that templates use.
struct ScopeValue
{
    QVariant value; ///< invalid for no value, and for one of bad quality
    Nodes::Quality quality = Nodes::Quality::Good;
    QString error; ///< there is no such thing
    bool needsSecondPass = false;
};

/// `name` is "source.column"; either may hold points and blanks.
ScopeValue fieldOf(const ReportScope &scope, const QString &name);
/// Variables of report and template, and #PAGE, #PAGE_COUNT.
ScopeValue variableOf(const ReportScope &scope, const QString &name);

} // namespace LimeReport
