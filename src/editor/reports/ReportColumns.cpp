#include "editor/reports/ReportColumns.h"

#include "nodes/model/KindInfo.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/reportAlarms.h"
#include "nodes/reports/reportEvents.h"
#include "nodes/reports/reportSummary.h"
#include "nodes/signals/BasicSignal.h"

namespace Editor {

namespace {

using Nodes::reportAlarms;
using Nodes::reportSummary;

const QString rowSample = QStringLiteral("08:00 – 09:00");

ReportColumn text(const char *key, const char *title, int weight, const char *sample)
{
    return {QLatin1String(key),       QString::fromUtf8(title), weight, false, false, 0,
            QString::fromUtf8(sample)};
}

ReportColumn number(const char *key, const char *title, int decimals, const char *sample)
{
    return {QLatin1String(key), QString::fromUtf8(title), 2, true, false,
            decimals,           QLatin1String(sample)};
}

int codeOf(const Nodes::BasicReportSource &source, unsigned valueId)
{
    const Nodes::PropertyDescriptor *d = source.GetKind()->FindProperty(valueId);
    return d ? *static_cast<const int *>(d->binding.data(source)) : 0;
}

/// A column of one signal: its description, else its name, with the unit of what it tells.
ReportColumn ofSignal(const Nodes::ReportSignalInfo &info, const QString &key)
{
    const Nodes::BasicSignal *signal = info.GetSignal();
    std::string title = info.GetDescription();
    if (title.empty())
        title = signal ? signal->GetName() : info.GetName();
    QString head = QString::fromStdString(title);
    const QString unit = QString::fromStdString(info.GetUnit());
    if (!unit.isEmpty() && !head.endsWith(", " + unit))
        head += ", " + unit;
    const int decimals = info.GetDecimals() >= 0 ? info.GetDecimals()
                         : signal                ? signal->GetDecimals()
                                                 : 1;
    return {key, head, 2, true, true, decimals, QStringLiteral("12.5")};
}

QVector<ReportColumn> ofSummary(const reportSummary &summary)
{
    if (codeOf(summary, reportSummary::Prop::Rows) == reportSummary::RowsOfSignals)
        return {text("text", "Показатель", 4, "Температура подачи"),
                text("unit", "Единица", 1, "°C"), number("value", "Значение", 1, "12.5")};
    QVector<ReportColumn> columns{
        {QStringLiteral("row"), QStringLiteral("Время"), 3, false, false, 0, rowSample}};
    for (const Nodes::ReportSignalInfo *info : summary.GetSignals())
        columns << ofSignal(*info, QString::fromStdString(info->GetName()));
    return columns;
}

QVector<ReportColumn> ofAlarms(int content)
{
    switch (content) {
    case reportAlarms::ContentFrequent:
        return {number("rank", "№", 0, "1"), text("source", "Источник", 4, "Котёл 1"),
                text("text", "Тревога", 6, "Давление высокое"), number("raised", "Раз", 0, "12")};
    case reportAlarms::ContentTimeline:
        return {text("row", "Время", 3, "08:00 – 08:10"), number("raised", "Тревог", 0, "3")};
    case reportAlarms::ContentAreas:
        return {number("rank", "№", 0, "1"), text("area", "Участок", 5, "Котельная"),
                number("raised", "Тревог", 0, "12"), number("share", "Доля, %", 1, "40")};
    case reportAlarms::ContentShifts:
        return {text("row", "Смена", 4, "08:00 – 20:00"), number("raised", "Тревог", 0, "12"),
                number("rate", "За 10 минут", 1, "0.2")};
    default:
        return {text("name", "Показатель", 6, "Тревог за смену"),
                text("value", "Значение", 2, "12"),
                text("target", "Рекомендация", 3, "не более 72"),
                text("verdict", "Оценка", 2, "в норме")};
    }
}

} // namespace

QVector<ReportColumn> reportColumns(const Nodes::BasicReportSource &source)
{
    if (const auto *summary = dynamic_cast<const reportSummary *>(&source))
        return ofSummary(*summary);
    if (const auto *info = dynamic_cast<const Nodes::ReportSignalInfo *>(&source)) {
        const bool isRaw = info->GetStep() == Nodes::StepSamples;
        ReportColumn value = ofSignal(*info, QStringLiteral("value"));
        value.isMarked = false; // that of a single signal is called otherwise
        const char *time = isRaw ? "time" : "row";
        return {{QLatin1String(time), QStringLiteral("Время"), 3, false, false, 0, rowSample},
                value};
    }
    if (dynamic_cast<const Nodes::reportEvents *>(&source))
        return {text("date", "Дата", 2, "22.11.2026"), text("clock", "Время", 2, "08:15:00"),
                text("source", "Источник", 4, "Котёл 1"), text("text", "Событие", 8, "Пуск насоса"),
                text("user", "Пользователь", 3, "Иванов И. И.")};
    if (dynamic_cast<const reportAlarms *>(&source))
        return ofAlarms(codeOf(source, reportAlarms::Prop::Content));
    return {};
}

} // namespace Editor
