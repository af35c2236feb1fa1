// What cells of the alarm window say where they are too narrow for all of it.
#include "support/Rows.h"

#include "widgets/events/AlarmRowDelegate.h"
#include "widgets/events/ModelAlarms.h"

#include "nodes/alarms/alarmColumn.h"

#include <QStandardItemModel>

using namespace Widgets;
using Nodes::alarmColumn;

namespace {

struct Delegate : AlarmRowDelegate
{
    QString shown(const QModelIndex &index, int width) const
    {
        QStyleOptionViewItem cell;
        cell.rect = QRect(0, 0, width, 40);
        initStyleOption(&cell, index);
        return cell.text;
    }
};

} // namespace

class TestAlarmCells : public QObject
{
    Q_OBJECT

private slots:
    void whatDoesNotFitIsSaidInFewerWords_data()
    {
        const Rows<int, QString, QString, QString> row("kind", "whole", "room", "shown");
        const QString active = "Активные неквитированные, приоритет 2";
        row("room for all", alarmColumn::Group, active, active, active);
        row("none for the priority", alarmColumn::Group, active, "Активные неквитированные",
            "Активные неквитированные");
        row("none for the words", alarmColumn::Group, active, "Не квитирована", "Не квитирована");
        row("acknowledged", alarmColumn::Group, "Активные квитированные, приоритет 1", "",
            "Квитирована");
        row("returned", alarmColumn::Group, "Снятые неквитированные, приоритет 4", "",
            "Снята, ждёт");
        row("to be reset", alarmColumn::Group, "Ожидающие сброса", "", "Ждёт сброса");
        row("another word", alarmColumn::Group, "Отложенные, приоритет 3", "", "Отложенные");
        const QString doubt = "Давление 7.2 МПа (значение недостоверно)";
        row("room for the doubt", alarmColumn::Text, doubt, doubt, doubt);
        row("doubt goes to the front", alarmColumn::Text, doubt, "Давление 7.2 МПа",
            "Недостоверно: Давление 7.2 МПа");
        row("no doubt", alarmColumn::Text, "Давление 7.2 МПа", "Дав", "Давление 7.2 МПа");
        row("other columns as they are", alarmColumn::Source, active, "", active);
    }
    void whatDoesNotFitIsSaidInFewerWords()
    {
        QFETCH(int, kind);
        QFETCH(QString, whole);
        QFETCH(QString, room);
        QStandardItemModel model(1, 1);
        const QModelIndex index = model.index(0, 0);
        model.setData(index, whole);
        model.setData(index, kind, ModelAlarms::ColumnKindRole);
        const QFontMetrics metrics = QStyleOptionViewItem().fontMetrics;
        QTEST(Delegate().shown(index, metrics.horizontalAdvance(room) + 16), "shown");
    }
};

QTEST_MAIN(TestAlarmCells)
#include "tst_alarm_cells.moc"
