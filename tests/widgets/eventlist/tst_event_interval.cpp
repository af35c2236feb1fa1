// Intervals of days: their arithmetic on days of any length, what the tool bar makes of them.
#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "support/WhenShown.h"

#include "widgets/eventlist/DateIntervalWidget.h"
#include "widgets/eventlist/DayInterval.h"
#include "widgets/eventlist/IntervalAction.h"
#include "widgets/eventlist/WidgetEventToolBar.h"

#include "nodes/visual/events/widgetEventList.h"

#include <QAction>
#include <QCalendarWidget>
#include <QPushButton>
#include <QToolButton>

#include <ctime>

using namespace Widgets;
using Nodes::widgetEventList;

namespace {

const QString format = QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz");

QDateTime at(const QString &text)
{
    return QDateTime::fromString(text, format);
}

struct Rig : RuntimeProject
{
    Rig() : RuntimeProject(R"(<layer id="2" name="L"><eventList id="20" name="E"/></layer>)") {}
    widgetEventList *list() const { return node<widgetEventList>(20); }
};

} // namespace

class TestEventInterval : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void lengthsMakeIntervals_data();
    void lengthsMakeIntervals();
    void daysAreCounted_data();
    void daysAreCounted();
    void anyNumberOfDaysIsWhole();
    void theKeyTellsTheInterval();
    void theToolBarKeepsDaysInTheNode();
    void keysHaveTheSizeOfIcons();
    void theDialogGivesWholeDays();
};

// Clocks go on at 02:00 on 2024-03-31 and back at 03:00 on 2024-10-27.
void TestEventInterval::initTestCase()
{
    qputenv("TZ", "Europe/Berlin");
    tzset();
    QCOMPARE(at("2024-03-31 12:00:00.000").offsetFromUtc(), 7200);
}

void TestEventInterval::lengthsMakeIntervals_data()
{
    const Rows<int, int, QString, QString> row("length", "unit", "now", "from");
    row("a day", 1, 4, "2024-05-10 13:00:00.000", "2024-05-10 00:00:00.000");
    row("a week", 7, 4, "2024-05-10 00:00:00.000", "2024-05-04 00:00:00.000");
    row("an hour", 1, 3, "2024-05-10 13:00:00.000", "2024-05-10 00:00:00.000");
    row("two days of minutes", 2880, 2, "2024-05-10 13:00:00.000", "2024-05-09 00:00:00.000");
    row("a day and a half", 129600, 1, "2024-05-10 13:00:00.000", "2024-05-10 00:00:00.000");
    row("no unit", 5, 7, "2024-05-10 13:00:00.000", "2024-05-11 00:00:00.000");
    row("on the short day", 1, 4, "2024-03-31 03:30:00.000", "2024-03-31 00:00:00.000");
    row("over the short day", 2, 4, "2024-04-01 00:30:00.000", "2024-03-31 00:00:00.000");
    row("over the long day", 2, 4, "2024-10-28 00:30:00.000", "2024-10-27 00:00:00.000");
}

void TestEventInterval::lengthsMakeIntervals()
{
    QFETCH(int, length);
    QFETCH(int, unit);
    QFETCH(QString, now);
    const Rig rig;
    rig.list()->SetLength(length, unit);
    const DayInterval interval = DayInterval::ofSeconds(rig.list()->GetLengthSeconds(), at(now));
    QTEST(interval.from.toString(format), "from");
    QCOMPARE(interval.to.toString(format), now.left(10) + " 23:59:59.999");
}

void TestEventInterval::daysAreCounted_data()
{
    const Rows<QString, QString, int, QString> row("from", "to", "days", "back");
    row("a day", "2024-05-10 00:00:00.000", "2024-05-10 23:59:59.999", 1,
        "2024-05-09 00:00:00.000");
    row("23 hours", "2024-03-31 00:00:00.000", "2024-03-31 23:59:59.999", 1,
        "2024-03-30 00:00:00.000");
    row("25 hours", "2024-10-27 00:00:00.000", "2024-10-27 23:59:59.999", 1,
        "2024-10-26 00:00:00.000");
    row("a week over it", "2024-03-28 00:00:00.000", "2024-04-03 23:59:59.999", 7,
        "2024-03-21 00:00:00.000");
    row("a year", "2024-01-01 00:00:00.000", "2024-12-31 23:59:59.999", 366,
        "2022-12-31 00:00:00.000");
    row("ends before it begins", "2024-05-11 00:00:00.000", "2024-05-10 23:59:59.999", -1,
        "2024-05-12 00:00:00.000");
}

void TestEventInterval::daysAreCounted()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    const DayInterval interval{at(from), at(to)};
    QTEST(interval.days(), "days");
    const DayInterval back = interval.shifted(-interval.days());
    QTEST(back.from.toString(format), "back");
    QCOMPARE(back.to.time(), QTime(23, 59, 59, 999));
    QCOMPARE(back.days(), interval.days());
}

void TestEventInterval::anyNumberOfDaysIsWhole()
{
    const QDate first(2000, 1, 1);
    for (int days = 1; days <= 3660; ++days)
        QCOMPARE(DayInterval::ofDates(first, first.addDays(days - 1)).days(), days);
}

void TestEventInterval::theKeyTellsTheInterval()
{
    IntervalAction key;
    key.setInterval(at("2024-03-01 00:00:00.000"), at("2024-03-07 23:59:59.999"));
    QCOMPARE(key.text(), QStringLiteral("01.03.2024 - 07.03.2024 7Д"));
}

void TestEventInterval::theToolBarKeepsDaysInTheNode()
{
    const Rig rig;
    rig.set(20, "lengthUnit", "hours");
    rig.set(20, "length", "48");
    rig.set(20, "tracking", "false");
    WidgetEventToolBar bar(rig.list(), nullptr);
    QSignalSpy changed(&bar, &WidgetEventToolBar::intervalChanged);
    bar.updateProperties();
    QVERIFY(!bar.isTracking());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(rig.list()->GetLength(), 2);
    QCOMPARE(rig.list()->GetLengthUnit(), int(widgetEventList::UnitDays));
    const QDateTime from = bar.getFromDt();
    const QDateTime to = bar.getToDt();
    bar.onPrevious();
    QCOMPARE(bar.getFromDt().date(), from.date().addDays(-2));
    QCOMPARE(bar.getToDt().date(), to.date().addDays(-2));
    bar.onNext();
    QCOMPARE(bar.getFromDt(), from);
    bar.setInterval(at("2024-05-01 00:00:00.000"), at("2024-05-05 23:59:59.999"));
    bar.onCurrent();
    QCOMPARE(bar.getToDt(), to);
    QCOMPARE(bar.getFromDt().date(), to.date().addDays(-4));
    QCOMPARE(rig.list()->GetLength(), 5);
    QCOMPARE(changed.count(), 4);
}

void TestEventInterval::keysHaveTheSizeOfIcons()
{
    const Rig rig;
    rig.set(20, "iconSize", "56");
    WidgetEventToolBar bar(rig.list(), nullptr);
    bar.updateProperties();
    QStringList texts;
    const QList<QAction *> keys = bar.actions();
    for (QAction *key : keys) {
        const auto *button = qobject_cast<QToolButton *>(bar.widgetForAction(key));
        QVERIFY(button);
        QCOMPARE(button->minimumHeight(), 56);
        QCOMPARE(button->maximumHeight(), 56);
        QCOMPARE(button->minimumWidth(), 56);
        texts << key->text();
    }
    QCOMPARE(texts.mid(2), (QStringList{"Вперед", "Фильтр", "Тревоги", "Следовать"}));
    QCOMPARE(texts[0], QStringLiteral("Назад"));
    QVERIFY(texts[1].endsWith(QStringLiteral(" 1Д")));
}

void TestEventInterval::theDialogGivesWholeDays()
{
    const Rig rig;
    WidgetEventToolBar bar(rig.list(), nullptr);
    bar.updateProperties();
    bar.setInterval(at("2024-10-26 00:00:00.000"), at("2024-10-26 23:59:59.999"));
    const WhenShown<DateIntervalWidget> dialog([](DateIntervalWidget &window) {
        QCOMPARE(window.windowTitle(), QStringLiteral("Выбор интервала"));
        auto *from = window.findChild<QCalendarWidget *>("calendarWidgetFrom");
        auto *to = window.findChild<QCalendarWidget *>("calendarWidgetTo");
        QCOMPARE(from->selectedDate(), QDate(2024, 10, 26));
        const auto accepts = [&window] {
            const QList<QPushButton *> buttons = window.findChildren<QPushButton *>();
            return std::any_of(buttons.begin(), buttons.end(), [](const QPushButton *button) {
                return button->text() == QStringLiteral("Ок") && button->isEnabled();
            });
        };
        to->setSelectedDate(QDate(2024, 10, 25));
        QVERIFY(!accepts());
        to->setSelectedDate(QDate(2024, 10, 27));
        QVERIFY(accepts());
        window.accept();
    });
    QSignalSpy changed(&bar, &WidgetEventToolBar::intervalChanged);
    bar.onIntervalAction();
    QCOMPARE(changed.count(), 1);
    QCOMPARE(bar.getToDt().toString(format), QStringLiteral("2024-10-27 23:59:59.999"));
    QCOMPARE(rig.list()->GetLength(), 2);
}

QTEST_MAIN(TestEventInterval)
#include "tst_event_interval.moc"
