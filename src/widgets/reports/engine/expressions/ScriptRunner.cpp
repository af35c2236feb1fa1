#include "widgets/reports/engine/expressions/ScriptRunner.h"

#include "widgets/reports/engine/faults/FaultText.h"

#include <QDateTime>
#include <QQmlEngine>

#include <cmath>

namespace LimeReport {

namespace {

constexpr int longestText = 1000000;

// The functions of templates, which scripts can't replace. What makes a huge value in one call,
// which nothing could end, is bounded or taken away.
const char *const prelude = R"js((function (host, longest) {
    'use strict';
    var text = function (value, usual) { return value === undefined ? usual : String(value); };
    var functions = {
        numberFormat: function (value, format, precision, locale) {
            return host.numberFormat(value, text(format, 'f'), precision === undefined ? 2 : precision,
                                     text(locale, ''));
        },
        currencyFormat: function (value, locale) { return host.currencyFormat(value, text(locale, '')); },
        dateFormat: function (value, format, locale) {
            return host.timeFormat(value, text(format, 'dd.MM.yyyy'), text(locale, ''));
        },
        timeFormat: function (value, format, locale) {
            return host.timeFormat(value, text(format, 'hh:mm:ss'), text(locale, ''));
        },
        dateTimeFormat: function (value, format, locale) {
            return host.timeFormat(value, text(format, 'dd.MM.yyyy hh:mm:ss'), text(locale, ''));
        },
        date: function () { return host.date(); },
        now: function () { return host.now(); },
        line: function (band) { return host.line(String(band)); },
        getVariable: function (name) { return host.getVariable(String(name)); },
        setVariable: function (name, value) { host.setVariable(String(name), value); },
        getField: function (name) { return host.getField(String(name)); }
    };
    var global = this;
    Object.keys(functions).forEach(function (name) {
        Object.defineProperty(global, name, { value: functions[name] });
    });
    ['repeat', 'padStart', 'padEnd'].forEach(function (name) {
        var made = String.prototype[name];
        Object.defineProperty(String.prototype, name, { value: function (count, filling) {
            var length = name === 'repeat' ? count * this.length : count;
            if (length > longest)
                throw new RangeError('a text of more than ' + longest + ' characters');
            return made.call(this, count, filling);
        } });
    });
    ['ArrayBuffer', 'SharedArrayBuffer', 'DataView', 'Atomics', 'Int8Array', 'Uint8Array',
     'Uint8ClampedArray', 'Int16Array', 'Uint16Array', 'Int32Array', 'Uint32Array', 'Float32Array',
     'Float64Array'].forEach(function (name) { delete global[name]; });
}))js";

QString parameterList(int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i)
        names.append(QStringLiteral("v$%1").arg(i));
    return names.join(',');
}

// Anything may be thrown, and an error is known by its type.
QString asFunction(const QString &parameters, const QString &body)
{
    return QStringLiteral("(function(%1){try{%2}catch(e){throw e instanceof Error?e:new "
                          "Error(String(e))}})")
        .arg(parameters, body);
}

} // namespace

ScriptRunner::ScriptRunner(const ScriptLimits &limits)
    : m_limits(limits), m_watchdog(m_engine, limits)
{
    QQmlEngine::setObjectOwnership(&m_functions, QQmlEngine::CppOwnership);
    QJSValue begin = m_engine.evaluate(QString::fromLatin1(prelude));
    begin.callWithInstance(m_engine.globalObject(),
                           {m_engine.newQObject(&m_functions), QJSValue(longestText)});
}

int ScriptRunner::compile(const QString &code, int parameters)
{
    m_scripts.push_back(compiled(code, parameterList(parameters)));
    return int(m_scripts.size()) - 1;
}

ScriptRunner::Script ScriptRunner::compiled(const QString &code, const QString &parameters)
{
    Script script;
    const QString onLines = '\n' + code + '\n'; // a comment at its end ends there
    QString notExpression;
    script.function = evaluate(asFunction(parameters, "return (" + onLines + ");"), &notExpression);
    if (notExpression.isEmpty())
        return script;
    script.function = evaluate(asFunction(parameters, onLines), &script.error);
    if (!script.error.isEmpty() || code.contains(QLatin1String("return")))
        return script;
    script.source = onLines; // so that lines are counted as of the other forms
    const QString more = parameters.isEmpty() ? QStringLiteral("source$") : parameters + ",source$";
    script.function = evaluate(asFunction(more, "return eval(source$);"), &script.error);
    return script;
}

QJSValue ScriptRunner::evaluate(const QString &code, QString *error)
{
    m_watchdog.begin();
    const QJSValue result = m_engine.evaluate(code);
    if (result.isError())
        *error = errorText(result);
    const ScriptWatchdog::Verdict verdict = m_watchdog.end();
    if (verdict != ScriptWatchdog::Verdict::Fine)
        *error = verdictText(verdict);
    return result;
}

ScriptRunner::Outcome ScriptRunner::run(int number, const QVariantList &inputs, ReportScope &scope)
{
    Script &script = m_scripts[std::size_t(number)];
    Outcome outcome;
    outcome.error = script.error;
    if (!outcome.error.isEmpty())
        return outcome;
    QJSValueList arguments;
    arguments.reserve(inputs.size() + 1);
    for (const QVariant &input : inputs)
        arguments.append(toScript(input));
    if (!script.source.isEmpty())
        arguments.append(QJSValue(script.source));
    m_functions.setScope(&scope);
    m_watchdog.begin();
    outcome = outcomeOf(script.function.call(arguments));
    const ScriptWatchdog::Verdict verdict = m_watchdog.end();
    outcome.needsSecondPass = m_functions.takeNeedsSecondPass();
    const QString refusal = m_functions.takeError();
    if (verdict != ScriptWatchdog::Verdict::Fine) {
        outcome.error = script.error = verdictText(verdict);
        m_engine.collectGarbage();
    } else if (outcome.error.isEmpty()) {
        outcome.error = refusal;
    }
    return outcome;
}

QString ScriptRunner::runGlobal(const QString &code, ReportScope &scope)
{
    m_functions.setScope(&scope);
    QString error;
    evaluate(code, &error);
    const QString refusal = m_functions.takeError();
    return error.isEmpty() ? refusal : error;
}

ScriptRunner::Outcome ScriptRunner::outcomeOf(const QJSValue &result)
{
    Outcome outcome;
    if (result.isError()) {
        outcome.error = errorText(result);
    } else if (result.isNumber()) {
        if (std::isfinite(result.toNumber()))
            outcome.value = result.toNumber();
    } else if (result.isBool()) {
        outcome.value = result.toBool();
    } else if (result.isDate()) {
        const QDateTime time = result.toDateTime();
        if (time.isValid())
            outcome.value = time.toLocalTime();
    } else if (!result.isUndefined() && !result.isNull()) {
        const QString text = result.toString(); // of objects by their own function
        if (text.size() > longestText)
            outcome.error = QStringLiteral("в тексте больше %1 знаков").arg(longestText);
        else
            outcome.value = text;
    }
    return outcome;
}

QJSValue ScriptRunner::toScript(const QVariant &value)
{
    switch (int(value.type())) {
    case QMetaType::UnknownType:
        return QJSValue(QJSValue::UndefinedValue);
    case QMetaType::Bool:
        return QJSValue(value.toBool());
    case QMetaType::QString:
        return QJSValue(value.toString());
    case QMetaType::QDateTime:
    case QMetaType::QDate:
        return m_engine.toScriptValue(value.toDateTime());
    default:
        break;
    }
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? QJSValue(number) : QJSValue(value.toString());
}

QString ScriptRunner::verdictText(ScriptWatchdog::Verdict verdict)
{
    switch (verdict) {
    case ScriptWatchdog::Verdict::TooLong:
        return QStringLiteral("сценарий не закончился вовремя и больше не выполняется");
    case ScriptWatchdog::Verdict::TooLarge:
        return QStringLiteral("сценарию не хватило памяти, больше он не выполняется");
    case ScriptWatchdog::Verdict::Cancelled:
        return QStringLiteral("прервано");
    case ScriptWatchdog::Verdict::Fine:
        break;
    }
    return QString();
}

QString ScriptRunner::errorText(const QJSValue &error)
{
    const int line =
        error.property(QStringLiteral("lineNumber")).toInt() - 1; // after the frame's own
    const QString text = FaultText::script(error.toString().left(300));
    return line > 1 ? QStringLiteral("%1 (строка %2)").arg(text).arg(line) : text;
}

} // namespace LimeReport
