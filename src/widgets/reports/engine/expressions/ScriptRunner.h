#pragma once

#include "widgets/reports/engine/expressions/ScriptFunctions.h"
#include "widgets/reports/engine/expressions/ScriptLimits.h"
#include "widgets/reports/engine/expressions/ScriptWatchdog.h"

#include <QJSEngine>
#include <QJSValue>

#include <vector>

namespace LimeReport {

/// Compiles and runs the scripts of templates. They reach the functions of ScriptFunctions and
/// nothing of this machine, and end within the limits; one that had to be ended is not run again.
/// One thread, but for cancel().
class ScriptRunner
{
public:
    explicit ScriptRunner(const ScriptLimits &limits);

    struct Outcome
    {
        QVariant value; ///< invalid for no value: undefined, null, not a number
        QString error;
        bool needsSecondPass = false;
    };

    /// A number for run(). `code` uses the parameters v$0, v$1, ... An error of it is told by
    /// run().
    int compile(const QString &code, int parameters);
    Outcome run(int script, const QVariantList &inputs, ReportScope &scope);
    /// Runs in the global scope: functions and variables it makes stay.
    QString runGlobal(const QString &code, ReportScope &scope);

    void cancel() { m_watchdog.cancel(); }

private:
    struct Script
    {
        QJSValue function;
        QString source; ///< of statements: run by eval, the value of the last one counts
        QString error;
    };

    Script compiled(const QString &code, const QString &parameters);
    QJSValue evaluate(const QString &code, QString *error);
    Outcome outcomeOf(const QJSValue &result);
    QJSValue toScript(const QVariant &value);
    static QString verdictText(ScriptWatchdog::Verdict verdict);
    static QString errorText(const QJSValue &error);

    const ScriptLimits m_limits;
    QJSEngine m_engine;
    ScriptFunctions m_functions;
    std::vector<Script> m_scripts;
    ScriptWatchdog m_watchdog; // ends before the engine does
};

} // namespace LimeReport
