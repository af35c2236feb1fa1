#pragma once

#include "widgets/reports/engine/expressions/ScopeValues.h"
#include "widgets/reports/engine/expressions/ScriptSource.h"

#include <QVariantList>

namespace LimeReport {

class AggregateBook;

/// What a script is handed for the scope's current rows.
struct ScriptInputs
{
    static ScriptInputs read(const ScriptSource &source, ReportScope &scope,
                             const AggregateBook *aggregates);

    QVariantList values;
    QString error;
    Nodes::Quality quality = Nodes::Quality::Good; ///< the worst of those that are there
    bool isMissingAny = false;
    bool needsSecondPass = false;
};

} // namespace LimeReport
