// Which texts stand for a value, and for which.
#include "widgets/elements/qwidgetEditBox.h"

#include "nodes/visual/elements/widgetEditBox.h"

#include <QRegExpValidator>
#include <QtMath>

#include <limits>

namespace Widgets {

namespace {

constexpr int anyDecimals = 1000; // what Qt itself takes for no rule

// Without an exponent, which no field takes.
QString numberText(double value)
{
    return QString::number(value, 'f', QLocale::FloatingPointShortest);
}

// Limits of the project may lie beyond what the type holds.
int toInt(double number)
{
    return int(qBound(double(std::numeric_limits<int>::min()), number,
                      double(std::numeric_limits<int>::max())));
}

} // namespace

Nodes::SignalValue qwidgetEditBox::convertValue(const QString &text, Nodes::enSignalValueType type)
{
    bool isOk = true;
    Nodes::SignalValue value;
    switch (type) {
    case Nodes::enSignalValueType::String:
        value = text.toStdString();
        break;
    case Nodes::enSignalValueType::Bool:
        value = text.toInt(&isOk) != 0;
        break;
    case Nodes::enSignalValueType::Int:
        value = text.toInt(&isOk);
        break;
    case Nodes::enSignalValueType::Double:
        value = text.toDouble(&isOk);
        break;
    case Nodes::enSignalValueType::ULong:
        value = text.toULong(&isOk);
        break;
    default:
        break;
    }
    return isOk ? value : Nodes::Result(Nodes::Result::WrongType, text.toStdString());
}

int qwidgetEditBox::typedDecimals() const
{
    if (m_editBox->GetValueType() != Nodes::enSignalValueType::Double)
        return 0;
    return m_editBox->GetUseLimits() ? qMax(1, m_editBox->GetStepDecimals()) : anyDecimals;
}

QString qwidgetEditBox::problemOf(const QString &text) const
{
    bool isNumber = false;
    (void)text.toDouble(&isNumber);
    if (!isNumber || !m_editBox->GetUseLimits())
        return QStringLiteral("Ввод не закончен.");
    return QStringLiteral("Допустимо от %1 до %2.")
        .arg(numberText(m_editBox->GetMinimum()), numberText(m_editBox->GetMaximum()));
}

QString qwidgetEditBox::inputProblem() const
{
    if (!m_editBox || !m_isEditing || text().isEmpty() || isAcceptable(text()))
        return {};
    return problemOf(text()) + QStringLiteral(" Значение не будет записано.");
}

QString qwidgetEditBox::undoneReason(const QString &text) const
{
    bool isNumber = false;
    (void)text.toDouble(&isNumber);
    if (!m_editBox || !isNumber || m_editBox->GetValueType() == Nodes::enSignalValueType::Bool)
        return {};
    const int point = text.indexOf(QLatin1Char('.'));
    const int decimals = typedDecimals();
    if (point >= 0 && decimals == 0)
        return QStringLiteral("Только целое число.");
    if (point >= 0 && text.size() - point - 1 > decimals)
        return QStringLiteral("Знаков после запятой не больше %1.").arg(decimals);
    return problemOf(text);
}

bool qwidgetEditBox::isAcceptable(const QString &text) const
{
    if (!m_validator)
        return m_editBox->GetValueType() == Nodes::enSignalValueType::String;
    QString judged = text;
    int position = 0;
    return m_validator->validate(judged, position) == QValidator::Acceptable;
}

void qwidgetEditBox::applyValidator(const Nodes::widgetEditBox &editBox)
{
    m_validator.reset();
    m_step = editBox.GetStep();
    const bool hasLimits = editBox.GetUseLimits();
    const double minimum = editBox.GetMinimum();
    const double maximum = editBox.GetMaximum();
    const auto number = [this](double lowest, double highest, int decimals) {
        auto validator = std::make_unique<QDoubleValidator>(lowest, highest, decimals, nullptr);
        validator->setNotation(QDoubleValidator::StandardNotation);
        m_validator = std::move(validator);
    };
    switch (editBox.GetValueType()) {
    case Nodes::enSignalValueType::Bool:
        m_validator = std::make_unique<QRegExpValidator>(QRegExp(QStringLiteral("^(0|1)$")));
        m_step = 1;
        break;
    case Nodes::enSignalValueType::Int:
        m_validator = hasLimits
                          ? std::make_unique<QIntValidator>(toInt(minimum), toInt(maximum), nullptr)
                          : std::make_unique<QIntValidator>();
        m_step = qMax(1, toInt(m_step));
        break;
    case Nodes::enSignalValueType::ULong:
        number(0.0, hasLimits ? maximum : 4294967295.0, 0);
        m_step = qMax(1, toInt(m_step));
        break;
    case Nodes::enSignalValueType::Double:
        if (hasLimits)
            number(minimum, maximum, typedDecimals());
        else
            number(-qInf(), qInf(), anyDecimals);
        break;
    default:
        m_step = 0;
        return;
    }
    QLocale locale(QLocale::English, QLocale::AnyCountry);
    locale.setNumberOptions(QLocale::RejectGroupSeparator); // a comma stands for the point
    m_validator->setLocale(locale);
}

void qwidgetEditBox::sepCountCalc()
{
    m_pending.replace(QLatin1Char(','), QLatin1Char('.'));
    if (m_decimals < 0 || m_pending.isEmpty())
        return;
    const int point = m_pending.indexOf(QLatin1Char('.'));
    const int digits = point < 0 ? 0 : m_pending.size() - point - 1;
    if (digits == 0 && m_decimals > 0)
        m_pending += QLatin1Char('.') + QString(m_decimals, QLatin1Char('0'));
    else if (digits > 0 && m_decimals == 0)
        m_pending.truncate(point);
    else if (digits > m_decimals)
        m_pending.chop(digits - m_decimals);
    else if (digits > 0)
        m_pending += QString(m_decimals - digits, QLatin1Char('0'));
}

} // namespace Widgets
