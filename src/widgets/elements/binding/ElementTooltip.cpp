#include "widgets/elements/binding/ElementTooltip.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/convert/PlainTip.h"
#include "utils/convert/TimeConversions.h"

#include <QHelpEvent>
#include <QStringList>
#include <QToolTip>

namespace Widgets {

namespace {

QString line(const char *name, const std::string &text)
{
    return QStringLiteral("%1: %2").arg(QString::fromUtf8(name), QString::fromStdString(text));
}

std::string valueText(const Nodes::SignalValue &value, const Nodes::BasicSignal *signal)
{
    if (value.IsError() || value.IsEmpty())
        return "нет";
    if (!signal)
        return value.ToString();
    const Nodes::ValueText text(signal);
    return text.WithUnit(text.OfLast(value));
}

std::string reasonText(const Nodes::SignalValue &value)
{
    if (value.IsEmpty())
        return "значение ещё не получено";
    if (value.IsError())
        return value.GetError().GetResultTranslated();
    switch (value.GetQuality()) {
    case Nodes::Quality::Bad:
        return "источник не отвечает";
    case Nodes::Quality::Stale:
        return "нет обновлений дольше допустимого";
    case Nodes::Quality::Uncertain:
        return "источник не подтверждает точность";
    case Nodes::Quality::Good:
        break;
    }
    return {};
}

std::string qualityText(const Nodes::SignalValue &value)
{
    const std::string name = Nodes::QualityName(value.GetQuality());
    if (value.IsGood() || value.GetQualityTime() == 0)
        return name;
    return name + " с " + Utils::timeText(value.GetQualityTime()).toStdString();
}

std::string stateText(Nodes::AlarmState state)
{
    switch (state) {
    case Nodes::AlarmState::ActiveUnacked:
        return "активна, не квитирована";
    case Nodes::AlarmState::ActiveAcked:
        return "активна, квитирована";
    case Nodes::AlarmState::ReturnedUnacked:
        return "снята, не квитирована";
    case Nodes::AlarmState::Shelved:
        return "отложена";
    case Nodes::AlarmState::Suppressed:
        return "подавлена";
    case Nodes::AlarmState::OutOfService:
        return "выведена из работы";
    case Nodes::AlarmState::AwaitingReset:
        return "условие снято, ждёт сброса";
    case Nodes::AlarmState::Normal:
    case Nodes::AlarmState::None:
        break;
    }
    return {};
}

QStringList alarmLines(const Nodes::BasicSignal &signal)
{
    const Nodes::systemCore *core = signal.GetCore();
    const Nodes::systemAlarming *alarming = core ? core->GetSystemAlarming() : nullptr;
    QStringList lines;
    if (alarming) {
        for (const Nodes::BasicEvent &alarm : alarming->GetActiveAlarms(signal))
            lines << line("Тревога", alarm.text + ", " + stateText(alarm.alarmState));
    }
    return lines;
}

} // namespace

QString ElementTooltip::text(const Nodes::BasicWidget &node)
{
    QStringList lines;
    if (!node.GetTooltip().empty())
        lines << QString::fromStdString(node.GetTooltip());
    if (node.GetSignalLink().isEmpty())
        return lines.join(QLatin1Char('\n'));
    const Nodes::BasicSignal *signal = node.GetSignal();
    const Nodes::SignalValue value = node.GetValue();
    lines << line("Сигнал", signal ? signal->GetPath() : "не найден");
    if (signal && Nodes::IsForbiddenToView(*signal))
        return (lines << QStringLiteral("Нет прав на просмотр")).join(QLatin1Char('\n'));
    lines << line("Качество", qualityText(value))
          << line(value.IsGood() ? "Значение" : "Последнее значение", valueText(value, signal));
    if (!value.IsError() && !value.IsEmpty())
        lines << line("Время", Utils::timeText(value.GetSourceTime()).toStdString());
    const std::string reason = reasonText(value);
    if (!reason.empty())
        lines << line("Причина", reason);
    if (signal)
        lines << alarmLines(*signal);
    return lines.join(QLatin1Char('\n'));
}

bool ElementTooltip::show(QEvent *event, const Nodes::BasicWidget *node)
{
    if (event->type() != QEvent::ToolTip || !node)
        return false;
    return show(event, text(*node));
}

bool ElementTooltip::show(QEvent *event, const QString &text)
{
    const QString shown = Utils::PlainTip(text);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), shown);
    event->setAccepted(!shown.isEmpty());
    return true;
}

} // namespace Widgets
