#pragma once

#include "widgets/WidgetsExport.h"

#include "widgets/reports/engine/expressions/Aggregate.h"

#include <QString>
#include <QVector>

namespace LimeReport {

/// A value that a script is handed when it runs.
struct ScriptInput
{
    /// The texts are what string literals of the script are joined with.
    enum class Kind { Field, FieldText, Variable, VariableText, Aggregate };

    Kind kind = Kind::Field;
    QString name; ///< "source.column" or that of a variable
    AggregateRequest aggregate;

    bool operator==(const ScriptInput &other) const
    {
        return kind == other.kind && name == other.name && aggregate == other.aggregate;
    }
};

/// A script of a template with nested expressions and aggregates taken out of its text: they become
/// parameters v$0, v$1, ..., so what they hold can never be run.
struct WIDGETS_EXPORT ScriptSource
{
    static ScriptSource read(const QString &script);

    QString code;
    QVector<ScriptInput> inputs;
    QString error; ///< an aggregate that is not written as it should be
};

} // namespace LimeReport
