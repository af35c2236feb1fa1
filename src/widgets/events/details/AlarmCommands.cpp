#include "widgets/events/details/AlarmCommands.h"

#include "widgets/actions/running/Refusals.h"
#include "widgets/charts/own/OwnTrend.h"
#include "widgets/dialogs/DialogFrames.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/details/AlarmLimitsDialog.h"
#include "widgets/events/details/AlarmNoteDialog.h"
#include "widgets/events/hidden/ModelHidden.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/navigation/SourceJump.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/signals/BasicSignal.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace Widgets {

using Nodes::AlarmState;
using Nodes::BasicEvent;

namespace {

const Nodes::BasicAlarm *nodeOf(const BasicEvent &alarm)
{
    return dynamic_cast<const Nodes::BasicAlarm *>(alarm.sourceNode.GetNode());
}

bool isWaiting(const BasicEvent &alarm)
{
    return alarm.alarmState == AlarmState::ActiveUnacked ||
           alarm.alarmState == AlarmState::ReturnedUnacked;
}

QString lackOf(Nodes::enPrivilegeType privilege, const char *name, const BasicEvent &alarm)
{
    if (HasPrivilege(privilege, alarm.sourceNode.GetNode()))
        return {};
    return QStringLiteral("Нет права: %1").arg(QString::fromUtf8(name));
}

// Why there is nothing to reset is said in a sentence for the operator.
void tellOfReset(const Nodes::Result &result)
{
    if (result == Nodes::Result::Refused || result == Nodes::Result::NotFound)
        ShowActionError(QStringLiteral("Тревога не сброшена: ") +
                        QString::fromStdString(result.GetDetail()));
    else
        ShowActionResult(result, "Тревога не сброшена");
}

QString obstacleToAcknowledge(const BasicEvent &alarm)
{
    const Nodes::systemAlarming *alarming = DesktopContext::alarming();
    if (!alarming || !alarming->isAcknowledgeEnabled())
        return QStringLiteral("В этом окне не квитируют");
    if (!isWaiting(alarm))
        return QStringLiteral("Квитировать нечего");
    return lackOf(Nodes::PrivilegeAcknowledge, "квитирование", alarm);
}

QString obstacleToReset(const BasicEvent &alarm)
{
    if (alarm.alarmState != AlarmState::AwaitingReset)
        return QStringLiteral("Сбрасывать нечего");
    return lackOf(Nodes::PrivilegeAcknowledge, "квитирование", alarm);
}

QString obstacleToTakeBack(const BasicEvent &alarm)
{
    if (ModelHidden::isByDesign(alarm))
        return QStringLiteral("Подавлена по проекту: вернётся, когда условие закончится");
    return lackOf(Nodes::PrivilegeShelve, "откладывание", alarm);
}

} // namespace

const std::vector<AlarmCommands::Row> &AlarmCommands::rows()
{
    static const std::vector<Row> rows{{Comment, "Квитировать с комментарием…"},
                                       {Reset, "Сбросить"},
                                       {Jump, "К окну"},
                                       {Trend, "Тренд"},
                                       {Shelve, "Отложить…"},
                                       {OutOfService, "Вывести из работы…"},
                                       {Limits, "Пределы…"}};
    return rows;
}

AlarmCommands::AlarmCommands(ModelManager &manager, QWidget &window)
    : QObject(&window), m_manager(manager), m_window(window)
{
}

QString AlarmCommands::obstacle(Command command, const BasicEvent &alarm)
{
    const Nodes::BasicAlarm *node = nodeOf(alarm);
    const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
    switch (command) {
    case Comment:
        return obstacleToAcknowledge(alarm);
    case Reset:
        return obstacleToReset(alarm);
    case Jump:
        return SourceJump::canJump(alarm.sourceNode)
                   ? QString()
                   : QStringLiteral("Ни в одном окне этого сигнала нет");
    case Trend:
        return signal ? QString() : QStringLiteral("Сигнала нет");
    case TakeBack:
        return obstacleToTakeBack(alarm);
    case Limits: // also to look at them; changing them is asked for there
        return node ? QString() : QStringLiteral("Настроек нет: тревога самой станции");
    case Shelve:
    case OutOfService:
        return lackOf(Nodes::PrivilegeShelve, "откладывание", alarm);
    }
    return {};
}

void AlarmCommands::run(Command command, const BasicEvent &alarm)
{
    Nodes::systemAlarming *alarming = DesktopContext::alarming();
    const Nodes::BasicAlarm *node = nodeOf(alarm);
    switch (command) {
    case Comment:
        return askComment(alarm);
    case Reset:
        return alarming ? tellOfReset(alarming->Reset(alarm.sourceNode)) : void();
    case Jump:
        return jump(alarm);
    case Trend:
        return node && node->GetSignal()
                   ? OwnTrend::show({node->GetSignal()->GetNodeLink()}, display())
                   : void();
    case Shelve:
        return askShelf(alarm);
    case OutOfService:
        return askOutOfService(alarm);
    case Limits:
        return openLimits(alarm);
    case TakeBack:
        return takeBack(alarm);
    }
}

AlarmNoteDialog *AlarmCommands::makeDialog(const BasicEvent &alarm, const QString &title,
                                           const QString &prompt, const QString &action,
                                           Ask onAccepted)
{
    DialogRequest request;
    request.parent = &m_window;
    auto *dialog = Dialogs::make<AlarmNoteDialog>(request);
    dialog->ask(title, QString::fromStdString(alarm.text), prompt, action);
    connect(dialog, &QDialog::accepted, this,
            [dialog, onAccepted = std::move(onAccepted)] { onAccepted(*dialog); });
    return dialog;
}

void AlarmCommands::askComment(const BasicEvent &alarm)
{
    const Nodes::AlarmOccurrence seen{alarm.sourceNode, alarm.occurrence};
    AlarmNoteDialog *dialog =
        makeDialog(alarm, QStringLiteral("Квитирование тревоги"), QStringLiteral("Комментарий:"),
                   QStringLiteral("Квитировать"), [this, seen](const AlarmNoteDialog &asked) {
                       m_manager.acknowledge({seen}, asked.note().toStdString());
                   });
    DialogFrames::open(*dialog, m_window);
}

void AlarmCommands::askShelf(const BasicEvent &alarm)
{
    AlarmNoteDialog *dialog = makeDialog(
        alarm, QStringLiteral("Отложить тревогу"), QStringLiteral("Причина:"),
        QStringLiteral("Отложить"), [link = alarm.sourceNode](const AlarmNoteDialog &asked) {
            if (Nodes::systemAlarming *alarming = DesktopContext::alarming())
                ShowActionResult(alarming->Shelve(link, asked.span(), asked.note().toStdString()),
                                 "Тревога не отложена");
        });
    dialog->offerSpans();
    dialog->requireNote();
    DialogFrames::open(*dialog, m_window);
}

void AlarmCommands::askOutOfService(const BasicEvent &alarm)
{
    AlarmNoteDialog *dialog = makeDialog(
        alarm, QStringLiteral("Вывести тревогу из работы"),
        QStringLiteral("Тревога не появится, пока её не вернут. Причина:"),
        QStringLiteral("Вывести из работы"),
        [link = alarm.sourceNode](const AlarmNoteDialog &asked) {
            if (Nodes::systemAlarming *alarming = DesktopContext::alarming())
                ShowActionResult(alarming->SetOutOfService(link, true, asked.note().toStdString()),
                                 "Тревога не выведена из работы");
        });
    dialog->requireNote();
    DialogFrames::open(*dialog, m_window);
}

void AlarmCommands::openLimits(const BasicEvent &alarm)
{
    DialogRequest request;
    request.parent = &m_window;
    auto *dialog = Dialogs::make<AlarmLimitsDialog>(request);
    dialog->setAlarm(alarm.sourceNode);
    DialogFrames::open(*dialog, m_window);
}

void AlarmCommands::jump(const BasicEvent &alarm)
{
    const Nodes::Result result = SourceJump::jump(alarm.sourceNode, display());
    ShowActionResult(result, "Окно не открыто");
    if (result)
        m_window.close(); // what is marked may lie behind it
}

void AlarmCommands::takeBack(const BasicEvent &alarm)
{
    Nodes::systemAlarming *alarming = DesktopContext::alarming();
    if (!alarming)
        return;
    const Nodes::Result result = alarm.alarmState == AlarmState::Shelved
                                     ? alarming->Unshelve(alarm.sourceNode)
                                 : alarm.alarmState == AlarmState::Suppressed
                                     ? alarming->SetSuppressed(alarm.sourceNode, false)
                                     : alarming->SetOutOfService(alarm.sourceNode, false);
    ShowActionResult(result, "Тревога не возвращена");
}

int AlarmCommands::display() const
{
    return QGuiApplication::screens().indexOf(
        QGuiApplication::screenAt(m_window.geometry().center()));
}

} // namespace Widgets
