#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

namespace LimeReport {

class ReportScope;

/// What scripts of templates can call, see docs/report-expressions.md. A missing value gives a
/// missing value. Rendering thread.
class ScriptFunctions : public QObject
{
    Q_OBJECT

public:
    /// The scope that getVariable and others work on; not owned.
    void setScope(ReportScope *scope) { m_scope = scope; }
    /// Something was asked for that only a second pass can tell; forgotten by the question.
    bool takeNeedsSecondPass();
    /// Why a call was refused, "" when none was; forgotten by the question.
    QString takeError();

    Q_INVOKABLE QVariant numberFormat(const QVariant &value, const QString &format, int precision,
                                      const QString &locale);
    Q_INVOKABLE QVariant currencyFormat(const QVariant &value, const QString &locale);
    Q_INVOKABLE QVariant timeFormat(const QVariant &value, const QString &format,
                                    const QString &locale);
    Q_INVOKABLE QVariant now() const;
    Q_INVOKABLE QVariant date() const;
    Q_INVOKABLE int line(const QString &band) const;
    Q_INVOKABLE QVariant getVariable(const QString &name);
    Q_INVOKABLE void setVariable(const QString &name, const QVariant &value);
    Q_INVOKABLE QVariant getField(const QString &name);

private:
    ReportScope *m_scope = nullptr;
    bool m_needsSecondPass = false;
    QString m_error;
};

} // namespace LimeReport
