#include "widgets/reports/engine/expressions/ScriptFunctions.h"

#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/expressions/ScopeValues.h"
#include "widgets/reports/engine/expressions/ValueText.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace LimeReport {

namespace {

constexpr int mostDecimals = 30;

QLocale localeOf(const QString &name, const QLocale &usual)
{
    return name.isEmpty() ? usual : QLocale(name);
}

// Numbers as everywhere on the station: a point, no groups.
QLocale plainNumbers()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

} // namespace

bool ScriptFunctions::takeNeedsSecondPass()
{
    return std::exchange(m_needsSecondPass, false);
}

QString ScriptFunctions::takeError()
{
    return std::exchange(m_error, QString());
}

QVariant ScriptFunctions::numberFormat(const QVariant &value, const QString &format, int precision,
                                       const QString &locale)
{
    const double number = ValueText::toNumber(value);
    if (std::isnan(number))
        return QVariant();
    QString text;
    if (format.contains('%'))
        return ValueText::printNumber(format, number, &text, &m_error) ? QVariant(text)
                                                                       : QVariant();
    const char letter = format.isEmpty() ? 'f' : format.at(0).toLatin1();
    if (!letter || !std::strchr("eEfgG", letter)) {
        m_error = QStringLiteral("numberFormat понимает e, f, g и «%.2f», но не «%1»").arg(format);
        return QVariant();
    }
    return localeOf(locale, plainNumbers())
        .toString(number, letter, std::clamp(precision, 0, mostDecimals));
}

QVariant ScriptFunctions::currencyFormat(const QVariant &value, const QString &locale)
{
    const double number = ValueText::toNumber(value);
    const QLocale usual(QLocale::Russian, QLocale::Russia);
    return std::isnan(number) ? QVariant()
                              : QVariant(localeOf(locale, usual).toCurrencyString(number));
}

QVariant ScriptFunctions::timeFormat(const QVariant &value, const QString &format,
                                     const QString &locale)
{
    const QDateTime time = value.type() == QVariant::Time
                               ? QDateTime(m_scope->now().date(), value.toTime())
                               : ValueText::toDateTime(value);
    const QLocale usual(QLocale::Russian, QLocale::Russia);
    return time.isValid() ? QVariant(localeOf(locale, usual).toString(time, format)) : QVariant();
}

QVariant ScriptFunctions::now() const
{
    return m_scope->now();
}

QVariant ScriptFunctions::date() const
{
    return m_scope->now().date().startOfDay();
}

int ScriptFunctions::line(const QString &band) const
{
    return m_scope->line(band);
}

QVariant ScriptFunctions::getVariable(const QString &name)
{
    const ScopeValue found = variableOf(*m_scope, name);
    m_needsSecondPass = m_needsSecondPass || found.needsSecondPass;
    if (!found.error.isEmpty())
        m_error = found.error;
    return found.value;
}

void ScriptFunctions::setVariable(const QString &name, const QVariant &value)
{
    if (name.isEmpty() || name.startsWith('#'))
        m_error = QStringLiteral("setVariable не может задать «%1»").arg(name);
    else
        m_scope->setVariable(name, value);
}

QVariant ScriptFunctions::getField(const QString &name)
{
    const ScopeValue found = fieldOf(*m_scope, name);
    if (!found.error.isEmpty())
        m_error = found.error;
    return found.value;
}

} // namespace LimeReport
