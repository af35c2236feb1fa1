#include "widgets/reports/engine/expressions/ValueText.h"

#include "widgets/reports/engine/expressions/ContentFormat.h"

#include <QDateTime>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace LimeReport::ValueText {

const QString nothing = QStringLiteral("—");

namespace {

bool isTime(const QVariant &value)
{
    return value.type() == QVariant::DateTime || value.type() == QVariant::Date;
}

bool isNumber(const QVariant &value)
{
    switch (int(value.type())) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return false;
    }
}

QString formattedTime(const QVariant &value, const QString &format, QString *error)
{
    const QDateTime time = toDateTime(value);
    if (time.isValid())
        return format.isEmpty() ? usual(time) : time.toString(format);
    *error = QStringLiteral("значение, которое нужно записать как дату и время, — не дата");
    return usual(value);
}

QString formattedNumber(const QVariant &value, const QString &format, QString *error)
{
    const double number = toNumber(value);
    QString text;
    if (std::isnan(number))
        *error = QStringLiteral("значение, которое нужно записать как число, — не число");
    else if (format.isEmpty())
        return usual(number);
    else if (printNumber(format, number, &text, error))
        return text;
    return usual(value);
}

} // namespace

QString usual(const QVariant &value)
{
    const int type = int(value.type());
    if (type == QMetaType::Double || type == QMetaType::Float) {
        const double number = value.toDouble();
        const int digits = type == QMetaType::Double ? 15 : 7;
        return std::isfinite(number) ? QString::number(number, 'g', digits) : nothing;
    }
    if (!value.isValid() || (value.isNull() && type != QMetaType::QString))
        return nothing;
    if (type == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("да") : QStringLiteral("нет");
    if (type == QMetaType::QDateTime)
        return value.toDateTime().toLocalTime().toString(QStringLiteral("dd.MM.yyyy hh:mm:ss"));
    if (type == QMetaType::QDate)
        return value.toDate().toString(QStringLiteral("dd.MM.yyyy"));
    if (type == QMetaType::QTime)
        return value.toTime().toString(QStringLiteral("hh:mm:ss"));
    return value.canConvert<QString>() ? value.toString() : QString(value.typeName());
}

QString formatted(const QVariant &value, const ContentFormat &format, QString *error)
{
    if (!value.isValid())
        return nothing;
    if (format.valueType == ContentFormat::DateTime)
        return formattedTime(value, format.format, error);
    if (format.valueType == ContentFormat::Double)
        return formattedNumber(value, format.format, error);
    if (!format.format.isEmpty() && isTime(value))
        return formattedTime(value, format.format, error);
    if (format.format.contains('%') && isNumber(value))
        return formattedNumber(value, format.format, error);
    return usual(value);
}

QString marked(const QString &text, Nodes::Quality quality)
{
    return quality == Nodes::Quality::Good || text == nothing ? text : text + QStringLiteral(" ?");
}

bool printNumber(const QString &format, double number, QString *text, QString *error)
{
    static const QRegularExpression one(
        R"(^((?:[^%]|%%)*)%([-+ 0#]*)(\d{0,2})(\.\d{0,2})?(?:l|ll)?([difeEgG])((?:[^%]|%%)*)$)");
    const QRegularExpressionMatch match = one.match(format);
    if (!match.hasMatch()) {
        *error = QStringLiteral("«%1» — не формат числа, такой как «%.2f»; исправьте "
                                "шаблон")
                     .arg(format);
        return false;
    }
    QString conversion = match.captured(5);
    QString precision = match.captured(4);
    if (conversion == QLatin1String("d") || conversion == QLatin1String("i")) {
        conversion = QStringLiteral("f"); // whole numbers beyond int, too
        precision = QStringLiteral(".0");
    }
    const QString print = '%' + match.captured(2) + match.captured(3) + precision + conversion;
    const auto plain = [](QString around) { return around.replace("%%", "%"); };
    *text = plain(match.captured(1)) + QString::asprintf(print.toLatin1().constData(), number) +
            plain(match.captured(6));
    return true;
}

QDateTime toDateTime(const QVariant &value)
{
    if (value.type() == QVariant::DateTime)
        return value.toDateTime().toLocalTime();
    if (value.type() == QVariant::Date)
        return value.toDate().startOfDay();
    if (isNumber(value))
        return QDateTime::fromMSecsSinceEpoch(value.toLongLong());
    return QDateTime::fromString(value.toString().trimmed(), Qt::ISODateWithMs).toLocalTime();
}

double toNumber(const QVariant &value)
{
    bool isOne = false;
    const double number =
        isNumber(value) ? value.toDouble(&isOne) : value.toString().trimmed().toDouble(&isOne);
    return isOne && std::isfinite(number) && value.type() != QVariant::Bool
               ? number
               : std::numeric_limits<double>::quiet_NaN();
}

} // namespace LimeReport::ValueText
