#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/events/AlarmDialog.h"
#include "widgets/events/AlarmRelay.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/details/AlarmDetails.h"
#include "widgets/events/details/AlarmLimitsDialog.h"
#include "widgets/events/details/AlarmNoteDialog.h"
#include "widgets/events/details/AlarmPanes.h"
#include "widgets/events/filter/AlarmAreasBar.h"
#include "widgets/events/filter/AlarmFilterBar.h"
#include "widgets/events/filter/AlarmList.h"
#include "widgets/events/hidden/AlarmHiddenPane.h"
#include "widgets/events/hidden/ModelHidden.h"

#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"

#include <QAbstractItemModelTester>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

using namespace Widgets;
using Nodes::AlarmState;

Q_DECLARE_METATYPE(Nodes::AlarmState)
Q_DECLARE_METATYPE(Widgets::AlarmFilter)

namespace {

constexpr const char *plant = R"xml(
<station id="20" name="St"><alarming id="21" name="A"/>%1</station>
<folder id="30" name="Котёл"><memorySignal id="31" name="T" maximum="150"><alarmLimit id="32"
 name="high" limit="80" deadband="2" text="Перегрев" cause="Мало воды" response="Открыть клапан"
 responseTime="10"/></memorySignal></folder>
<memorySignal id="33" name="P"><alarmLimit id="34" name="high" limit="80"/></memorySignal>)xml";

constexpr const char *noRights = R"(<authentication id="22" name="U"/><user id="23" name="op"/>)";

/// A station whose alarms are either raised by values or told to the window.
struct Plant
{
    explicit Plant(const char *users = "") : project(QString(plant).arg(users).toUtf8().constData())
    {
    }
    ~Plant()
    {
        project.manager.reset();
        project.core.Stop();
    }
    /// Raises the alarm of the boiler and selects it, its details in sight.
    void raise()
    {
        QVERIFY(project.core.Start());
        project.publish(31, 90.0);
        QTRY_VERIFY(window().isVisible());
        dialog().table().selectRow(0);
        named<QPushButton>("details")->click();
    }
    AlarmWindow &window() const { return *project.manager->GetWindowAlarms(); }
    AlarmDialog &dialog() const { return window().dialog(); }
    ModelManager &manager() const { return dialog().manager(); }
    AlarmList &list() const { return manager().sorting(); }
    Nodes::systemAlarming &alarming() const { return *project.core.GetSystemAlarming(); }

    Nodes::BasicEvent event(unsigned long alarm, int priority, AlarmState state,
                            const char *area = "", bool isFirstUp = false) const
    {
        Nodes::BasicEvent event;
        event.time = event.raised = ++lastTime;
        event.type = Nodes::TypeAlarmActive;
        event.alarmState = state;
        event.sourceNode = Nodes::NodeLink(alarm);
        event.priority = priority;
        event.occurrence = alarm;
        event.text = "Тревога " + std::to_string(alarm);
        event.area = area;
        event.isFirstUp = isFirstUp;
        return event;
    }
    /// The alarms as the table has them, from its top.
    QVector<unsigned long> listed() const
    {
        QVector<unsigned long> alarms;
        for (int row = 0; row < list().rowCount(); ++row)
            alarms.append(
                manager().model().row(list().mapToSource(list().index(row, 0)).row()).alarm());
        return alarms;
    }
    template <class Widget> Widget *named(const QString &name) const
    {
        return window().findChild<Widget *>(name);
    }
    QPushButton *button(const QString &text, QWidget *within = nullptr) const
    {
        for (auto *button : (within ? within : &window())->findChildren<QPushButton *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    template <class Dialog> Dialog *opened() const { return window().findChild<Dialog *>(); }
    Nodes::Result shelve() const { return alarming().Shelve(Nodes::NodeLink(32), 600, "Ремонт"); }

    mutable Nodes::Timestamp lastTime = 1700000000000000;
    RuntimeProject project;
};

AlarmFilter withPriorities(bool first, bool second, bool third, bool fourth)
{
    AlarmFilter filter;
    filter.priorities = {first, second, third, fourth};
    return filter;
}

AlarmFilter withArea(const QString &area)
{
    AlarmFilter filter;
    filter.area = area;
    return filter;
}

AlarmFilter withState(AlarmFilter::State state)
{
    AlarmFilter filter;
    filter.states = {state == AlarmFilter::Waiting, state == AlarmFilter::Active,
                     state == AlarmFilter::Returned};
    return filter;
}

AlarmFilter withText(const QString &text)
{
    AlarmFilter filter;
    filter.text = text;
    return filter;
}

} // namespace

class TestAlarmList : public QObject
{
    Q_OBJECT

private slots:

    void filters_data()
    {
        using Alarms = QVector<unsigned long>;
        const Rows<AlarmFilter, Alarms, int> row("filter", "shown", "hiddenUrgent");
        row("nothing", {}, {101, 103, 104, 102}, 0);
        row("priorities", withPriorities(false, true, false, true), {104, 102}, 1);
        row("area", withArea("Котёл"), {101, 102}, 0);
        row("no area", withArea(""), {103, 104}, 1);
        row("waiting", withState(AlarmFilter::Waiting), {101, 103, 104}, 0);
        row("active", withState(AlarmFilter::Active), {102}, 1);
        row("text", withText("ТРЕВОГА 103"), {103}, 1);
        row("area as text", withText("котёл"), {101, 102}, 0);
    }
    // What is left out stays untouched by "all", and what is urgent of it is told.
    void filters()
    {
        QFETCH(AlarmFilter, filter);
        Plant plant;
        QAbstractItemModelTester tester(&plant.list());
        plant.window().ReceiveAlarms({plant.event(101, 1, AlarmState::ActiveUnacked, "Котёл"),
                                      plant.event(102, 2, AlarmState::ActiveAcked, "Котёл"),
                                      plant.event(103, 3, AlarmState::ActiveUnacked),
                                      plant.event(104, 4, AlarmState::ReturnedUnacked)});
        plant.manager().setFilter(filter);
        QTEST(plant.listed(), "shown");
        const ModelManager::Counts counts = plant.manager().counts();
        QCOMPARE(counts.all, 4);
        QCOMPARE(counts.waiting, 3);
        QFETCH(QVector<unsigned long>, shown);
        QCOMPARE(counts.hiddenUrgent, shown.contains(101) ? 0 : 1);
        QCOMPARE(!plant.named<QWidget>("warning")->isHidden(), counts.hiddenUrgent > 0);
        for (const auto &seen : plant.manager().waiting(plant.manager().model().revision()))
            QVERIFY(shown.contains(seen.alarm.GetNodeId()));
        plant.button("Показать")->click();
        QCOMPARE(plant.listed().size(), 4);
    }
    void keepsTheFilterOfEachUser()
    {
        Plant plant(R"(<authentication id="22" name="U"><user id="23" name="a" passwordless="true"/>
            <user id="24" name="b" passwordless="true"/></authentication>)");
        QVERIFY(plant.project.core.Start());
        Nodes::systemAuthentication &users = *plant.project.core.GetSystemAuthentication();
        const auto *second = plant.window().findChild<QPushButton *>("priority2");
        QVERIFY(users.Authenticate(Nodes::NodeLink(23)).IsSuccess());
        plant.window().findChild<QPushButton *>("priority2")->click();
        QVERIFY(!second->isChecked() && !plant.list().filter().priorities[1]);
        QVERIFY(users.Authenticate(Nodes::NodeLink(24)).IsSuccess());
        QVERIFY(second->isChecked() && plant.list().filter().isEmpty());
        QVERIFY(users.Authenticate(Nodes::NodeLink(23)).IsSuccess());
        QVERIFY(!second->isChecked() && !plant.list().filter().priorities[1]);
        QVERIFY(!AlarmFilter::fromJson(plant.list().filter().toJson()).priorities[1]);
    }
    void groupsInAFlood()
    {
        Plant plant;
        QAbstractItemModelTester tester(&plant.manager().model());
        QAbstractItemModelTester listTester(&plant.list());
        plant.window().ReceiveAlarms({plant.event(101, 3, AlarmState::ActiveUnacked, "Сеть"),
                                      plant.event(102, 2, AlarmState::ActiveUnacked, "Котёл 10"),
                                      plant.event(103, 2, AlarmState::ActiveUnacked, "Котёл 2"),
                                      plant.event(104, 4, AlarmState::ActiveUnacked, "Сеть", true),
                                      plant.event(105, 1, AlarmState::ActiveUnacked, "Котёл 2")});
        const QVector<unsigned long> byUrgency = plant.listed();
        plant.manager().setGrouped(true);
        QCOMPARE(plant.listed(), (QVector<unsigned long>{104, 105, 103, 102, 101}));
        QVERIFY(plant.manager().model().columns().columnOf(Nodes::alarmColumn::Area) >= 0);
        const std::vector<AlarmArea> areas = plant.list().countAreas();
        QCOMPARE(QString::fromStdString(areas.at(0).name), QString("Котёл 2"));
        QCOMPARE(areas.at(0).all * 10 + areas.at(0).urgent, 21);
        // The first one stays although its area is folded.
        plant.manager().setFolded("Сеть", true);
        plant.manager().setFolded("Котёл 2", true);
        QCOMPARE(plant.listed(), (QVector<unsigned long>{104, 102}));
        QCOMPARE(plant.manager().counts().hiddenUrgent, 1);
        plant.manager().setGrouped(false);
        QCOMPARE(plant.listed(), byUrgency);
        QCOMPARE(plant.manager().model().columnCount(), 5);
    }
    void showsTheFlood()
    {
        Plant plant;
        QVERIFY(plant.project.core.Start());
        (void)plant.window();
        QVERIFY(plant.named<QLabel>("flood")->isHidden());
        for (int time = 0; time < 12; ++time) {
            plant.project.publish(31, 90.0);
            plant.project.publish(31, 10.0);
        }
        QTRY_VERIFY(!plant.named<QLabel>("flood")->isHidden());
        QVERIFY(plant.named<QLabel>("flood")->text().startsWith("Лавина тревог: 1"));
        QVERIFY(plant.list().isGrouped());
        auto *bar = plant.window().findChild<AlarmAreasBar *>();
        QTRY_VERIFY(plant.button("▾ Котёл: 1, ждут 1", bar));
        plant.button("▾ Котёл: 1, ждут 1", bar)->click();
        QTRY_COMPARE(plant.list().rowCount(), 0);
    }
    // At the beginning what comes is seen; further down what is read stays.
    void keepsWhatIsRead()
    {
        Plant plant;
        std::vector<Nodes::BasicEvent> batch;
        for (unsigned long alarm = 100; alarm < 200; ++alarm)
            batch.push_back(plant.event(alarm, 3, AlarmState::ActiveUnacked));
        plant.window().ReceiveAlarms(batch);
        QTRY_VERIFY(plant.window().isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&plant.window())); // nothing is painted before
        TableAlarms &table = plant.dialog().table();
        table.viewport()->repaint();
        plant.window().ReceiveAlarms({plant.event(300, 1, AlarmState::ActiveUnacked)});
        QCOMPARE(table.verticalScrollBar()->value(), 0);
        table.viewport()->repaint();
        const int height = table.rowHeight(0);
        table.verticalScrollBar()->setValue(50 * height);
        const unsigned long read = plant.listed().at(50);
        plant.window().ReceiveAlarms({plant.event(301, 1, AlarmState::ActiveUnacked),
                                      plant.event(302, 2, AlarmState::ActiveUnacked)});
        QCOMPARE(plant.listed().at(52), read);
        QCOMPARE(table.verticalScrollBar()->value(), 52 * height);
        QCOMPARE(table.newAbove(), 2);
        // One that is acknowledged goes its way alone.
        plant.window().ReceiveAlarms({plant.event(read, 3, AlarmState::ActiveAcked)});
        QCOMPARE(plant.listed().last(), read);
        QCOMPARE(table.verticalScrollBar()->value(), 51 * height);
    }
    void selectsNoOther_data()
    {
        const Rows<bool> row("isFiltered");
        row("it is over", false);
        row("it is filtered out", true);
    }
    // Nobody chose the neighbour of an alarm that goes.
    void selectsNoOther()
    {
        QFETCH(bool, isFiltered);
        Plant plant;
        plant.window().ReceiveAlarms({plant.event(101, 3, AlarmState::ActiveUnacked),
                                      plant.event(102, 3, AlarmState::ActiveUnacked)});
        TableAlarms &table = plant.dialog().table();
        table.selectRow(0);
        const unsigned long chosen = plant.listed().first();
        if (isFiltered)
            plant.manager().setFilter(withText(chosen == 101 ? "102" : "101"));
        else
            plant.window().ReceiveAlarms({plant.event(chosen, 3, AlarmState::Normal)});
        QCOMPARE(plant.list().rowCount(), 1);
        QVERIFY(!table.selectedRow().isValid());
    }
    // One that is announced again although nothing changed is to be seen and heard.
    void remindsOfWhatWaits()
    {
        Plant plant;
        Nodes::BasicEvent event = plant.event(101, 3, AlarmState::ActiveUnacked);
        plant.window().ReceiveAlarms({event});
        QTRY_VERIFY(plant.window().isVisible());
        plant.window().close();
        event.text += " (значение недостоверно)";
        plant.window().ReceiveAlarms({event});
        QVERIFY(!plant.window().isComingUp());
        event.reminders = 1;
        plant.window().ReceiveAlarms({event});
        QVERIFY(plant.window().isComingUp());
    }
    void acknowledgesWithAComment()
    {
        Plant plant;
        plant.raise();
        plant.button("Квитировать с комментарием…")->click();
        auto *dialog = plant.opened<AlarmNoteDialog>();
        QVERIFY(dialog);
        dialog->findChild<QPlainTextEdit *>("note")->setPlainText("Вода\nпроверена");
        dialog->findChild<QPushButton *>("accept")->click();
        QTRY_COMPARE(plant.project.journalled("Комментарий: Вода\nпроверена"), 1);
        QTRY_COMPARE(plant.manager().model().row(0).text(Nodes::alarmColumn::Comment),
                     QString("Вода\nпроверена"));
    }
    // Somebody else was faster: what was written is not lost unnoticed.
    void tellsOfALostComment()
    {
        Plant plant;
        plant.raise();
        plant.button("Квитировать с комментарием…")->click();
        auto *dialog = plant.opened<AlarmNoteDialog>();
        dialog->findChild<QPlainTextEdit *>("note")->setPlainText("Вода проверена");
        QVERIFY(plant.alarming().Acknowledge(Nodes::NodeLink(32)));
        MessageBoxes boxes;
        dialog->findChild<QPushButton *>("accept")->click();
        QCOMPARE(boxes.shown.size(), 1);
        QVERIFY(boxes.shown.first().contains("квитировать уже нечего"));
    }
    void guides()
    {
        Plant plant;
        plant.raise();
        QStringList texts;
        for (const QLabel *label : plant.dialog().panes().details().findChildren<QLabel *>())
            texts << label->text();
        const QString all = texts.join('\n');
        for (const char *expected : {"Мало воды", "Открыть клапан", "Участок: Котёл", "осталось 9"})
            QVERIFY2(all.contains(expected), qPrintable(all));
        const Nodes::BasicEvent alarm = *plant.dialog().panes().details().alarm();
        plant.dialog().panes().details().setNow(alarm.raised + 11 * 60000000LL);
        QVERIFY(plant.named<QLabel>("time")->text().endsWith("просрочено на 1 мин 00 с"));
    }
    void refusesWithoutRights()
    {
        Plant plant(noRights);
        plant.raise();
        for (const char *text : {"Квитировать с комментарием…", "Отложить…"})
            QVERIFY(!plant.button(text)->isEnabled());
        QVERIFY(plant.named<QLabel>("obstacles")->text().contains("Нет права: квитирование"));
        plant.button("Пределы…")->click();
        auto *limits = plant.opened<AlarmLimitsDialog>();
        QVERIFY(!limits->findChild<QPushButton *>("apply")->isEnabled());
    }
    void batchesComeApart()
    {
        Plant plant;
        QVERIFY(plant.project.core.Start());
        AlarmRelay relay(plant.alarming());
        QElapsedTimer clock;
        clock.start();
        std::vector<qint64> times;
        AlarmState told = AlarmState::None;
        connect(&relay, &AlarmRelay::arrived, &relay,
                [&](const std::vector<Nodes::BasicEvent> &alarms) {
                    times.push_back(clock.elapsed());
                    told = alarms.back().alarmState;
                });
        for (bool isHigh = true; times.size() < 8 && clock.elapsed() < 20000; isHigh = !isHigh) {
            plant.project.publish(31, isHigh ? 90.0 : 10.0);
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 1);
        }
        QVERIFY(times.size() >= 8);
        for (std::size_t i = 1; i < times.size(); ++i)
            QVERIFY2(times[i] - times[i - 1] >= 15, qPrintable(QString::number(times[i])));
        plant.project.publish(31, 90.0);
        QTRY_COMPARE(told, AlarmState::ActiveUnacked); // the last is never left waiting
    }
    // The list gives of its rows before the window covers more of the displays.
    void foldsInToWhatWasChosen()
    {
        Plant plant;
        plant.raise();
        plant.named<QPushButton>("details")->click();
        AlarmWindow &window = plant.window();
        const QRect screen = window.screen()->availableGeometry();
        const QRect chosen(screen.left(), screen.top() + 20, window.width(), 320);
        window.setGeometry(chosen);
        plant.named<QPushButton>("details")->click();
        QCoreApplication::processEvents();
        QVERIFY(plant.dialog().table().height() >= 120); // the screen has no room for more
        QVERIFY(window.height() > 320);
        plant.named<QPushButton>("details")->click();
        QCOMPARE(window.geometry(), chosen);
    }
    void keepsButtonsInSight_data()
    {
        const Rows<QSize, int> row("chosen", "nameLength");
        row("size of its own", QSize(), 5);
        row("low", QSize(800, 300), 5);
        row("narrow", QSize(720, 300), 5);
        row("much to say", QSize(), 300);
        row("much to say, low", QSize(800, 300), 300);
    }
    // Whatever the details of an alarm have to say: they take more room than those of none.
    void keepsButtonsInSight()
    {
        QFETCH(QSize, chosen);
        QFETCH(int, nameLength);
        Plant plant(noRights);
        auto *signal = plant.project.node<Nodes::BasicSignal>(31);
        signal->SetName(QString("имя ").repeated(nameLength / 4).toStdString());
        QVERIFY(plant.project.core.Start());
        plant.project.publish(31, 90.0);
        AlarmWindow &window = plant.window();
        QTRY_VERIFY(window.isVisible());
        QTRY_COMPARE(plant.named<QLabel>("counts")->text(), QString("Показано 1 из 1, ждут: 1"));
        if (chosen.isValid())
            window.resize(chosen);
        plant.named<QPushButton>("details")->click();
        plant.dialog().table().selectRow(0);
        for (const char *text : {"Закрыть", "Отложить…"}) {
            const QPushButton *button = plant.button(text);
            QTRY_VERIFY2(
                window.rect().contains(QRect(button->mapTo(&window, QPoint()), button->size())),
                text);
        }
    }
    // The right button, or a held key of menus, offers what the details do.
    void offersCommandsAtARow_data()
    {
        const Rows<QByteArray, QStringList> row("users", "possible");
        row("all rights", "",
            {"Квитировать с комментарием…", "Тренд", "Отложить…", "Вывести из работы…",
             "Пределы…"});
        row("none", noRights, {"Тренд", "Пределы…"});
    }
    void offersCommandsAtARow()
    {
        QFETCH(QByteArray, users);
        Plant plant(users);
        QVERIFY(plant.project.core.Start());
        plant.project.publish(31, 90.0);
        QTRY_VERIFY(plant.window().isVisible());
        TableAlarms &table = plant.dialog().table();
        QTRY_VERIFY(table.visualRect(table.model()->index(0, 0)).isValid());
        emit table.customContextMenuRequested({5, table.viewport()->height() - 1});
        QVERIFY(!plant.opened<TouchMenu>()); // below the rows
        emit table.customContextMenuRequested(
            table.visualRect(table.model()->index(0, 0)).center());
        auto *menu = plant.opened<TouchMenu>();
        QVERIFY(menu && menu->isVisible());
        QStringList possible;
        for (const QAction *action : menu->actions()) {
            if (action->isEnabled())
                possible << action->text();
        }
        QTEST(possible, "possible");
        menu->actions().constLast()->trigger();
        QVERIFY(plant.opened<AlarmLimitsDialog>());
    }
    void shelvesAndTakesBack()
    {
        Plant plant;
        plant.raise();
        QAbstractItemModelTester tester(&plant.manager().hidden());
        QAbstractItemModelTester sorted(&plant.dialog().panes().hidden().sorting());
        plant.button("Отложить…")->click();
        auto *dialog = plant.opened<AlarmNoteDialog>();
        auto *accept = dialog->findChild<QPushButton *>("accept");
        QVERIFY(!accept->isEnabled());     // no reason
        QWidget *frame = dialog->window(); // that the station draws: nothing to minimise it with
        QVERIFY(frame != dialog && frame->windowFlags().testFlag(Qt::FramelessWindowHint));
        QCOMPARE(frame->parentWidget(), static_cast<QWidget *>(&plant.window()));
        QCOMPARE(frame->windowModality(), Qt::WindowModal);
        QVERIFY(frame->rect().contains(QRect(accept->mapTo(frame, QPoint()), accept->size())));
        plant.button("8 ч", dialog)->click();
        QCOMPARE(dialog->span(), 8 * 3600);
        dialog->findChild<QPlainTextEdit *>("note")->setPlainText("Ремонт");
        accept->click();
        QTRY_COMPARE(plant.manager().hidden().rowCount(), 1);
        QCOMPARE(plant.list().rowCount(), 0);
        QTRY_COMPARE(plant.named<QPushButton>("hiddenAlarms")->text(),
                     QString("Скрыто: 1 (отложено)"));
        plant.named<QPushButton>("hiddenAlarms")->click();
        const ModelHidden &hidden = plant.manager().hidden();
        QCOMPARE(hidden.index(0, ModelHidden::Reason).data().toString(), QString("Ремонт"));
        QVERIFY(hidden.index(0, ModelHidden::Until).data().toString().endsWith("ещё 7 ч 59 мин"));
        plant.dialog().panes().hidden().table().selectRow(0);
        QVERIFY(plant.named<QLabel>("obstacle")->text().contains("Ремонт"));
        plant.named<QPushButton>("back")->click();
        QTRY_COMPARE(plant.list().rowCount(), 1);
        QCOMPARE(hidden.rowCount(), 0);
    }
    // What is listed is of the past then.
    void tellsWhenAlarmsAreNotWatched()
    {
        Plant plant;
        plant.raise();
        const auto *stopped = plant.named<QLabel>("stopped");
        QTRY_VERIFY(plant.named<QLabel>("counts")->text().endsWith("ждут: 1"));
        QVERIFY(stopped->isHidden());
        (void)plant.alarming().Stop();
        QTRY_VERIFY(!stopped->isHidden());
    }
    void hidesByDesign()
    {
        Plant plant;
        Nodes::BasicEvent event = plant.event(32, 2, AlarmState::Suppressed);
        event.hiddenReason = "по проекту: насос стоит";
        plant.window().ReceiveAlarms({event});
        plant.dialog().panes().setPane(AlarmPanes::Hidden);
        plant.dialog().panes().hidden().table().selectRow(0);
        QVERIFY(!plant.named<QPushButton>("back")->isEnabled());
        QCOMPARE(plant.manager().hidden().index(0, ModelHidden::Who).data().toString(),
                 QString("По проекту"));
        // From now on by hand.
        event.hiddenBy = "op";
        event.hiddenReason = "Ремонт";
        plant.window().ReceiveAlarms({event});
        QVERIFY(plant.named<QPushButton>("back")->isEnabled());
    }
    // Many at once are one reset, and give what the same one by one give.
    void takesManyHidden()
    {
        Plant plant;
        ModelHidden &hidden = plant.manager().hidden();
        QAbstractItemModelTester tester(&hidden);
        std::vector<Nodes::BasicEvent> batch;
        for (unsigned long alarm = 100; alarm < 160; ++alarm)
            batch.push_back(plant.event(alarm, 2, AlarmState(5 + int(alarm % 3))));
        hidden.take(batch);
        QCOMPARE(hidden.rowCount(), 60);
        QCOMPARE(hidden.counts().shelved, 20);
        for (Nodes::BasicEvent &event : batch)
            event.alarmState = AlarmState::Normal;
        batch.resize(50);
        hidden.take(batch);
        QCOMPARE(hidden.rowCount(), 10);
        hidden.take({plant.event(155, 2, AlarmState::ActiveUnacked)});
        QCOMPARE(hidden.rowCount(), 9);
        for (const unsigned long alarm : hidden.alarms())
            QVERIFY(alarm >= 150 && alarm != 155);
    }
    void changesLimits()
    {
        Plant plant;
        plant.raise();
        plant.button("Пределы…")->click();
        auto *dialog = plant.opened<AlarmLimitsDialog>();
        auto *limit = dialog->findChild<QLineEdit *>("number0");
        auto *message = dialog->findChild<QLabel *>("message");
        QCOMPARE(limit->text(), QString("80"));
        limit->setText("много");
        dialog->findChild<QPushButton *>("apply")->click();
        QVERIFY(message->text().contains("не число"));
        limit->setText("95,5");
        dialog->findChild<QLineEdit *>("number2")->setText("1.5");
        dialog->findChild<QPushButton *>("apply")->click();
        const Nodes::AlarmTuning tuned = plant.alarming().GetTuning(Nodes::NodeLink(32));
        QCOMPARE(*tuned.limit, 95.5);
        QCOMPARE(*tuned.onDelay, 1500);
        QCOMPARE(*tuned.deadband, 2.0);
        limit->setText("nan");
        dialog->findChild<QPushButton *>("apply")->click();
        QVERIFY(message->text().contains("не число"));
        limit->setText("95.5");
        dialog->findChild<QLineEdit *>("number2")->setText("1e12");
        dialog->findChild<QPushButton *>("apply")->click();
        QVERIFY2(message->text().contains("возникновения 2"), qPrintable(message->text()));
        dialog->findChild<QLineEdit *>("number2")->setText("1.5");
        limit->setText("-1e300");
        dialog->findChild<QLineEdit *>("number3")->setText("-5");
        dialog->findChild<QPushButton *>("apply")->click();
        QVERIFY2(message->text().startsWith("Не изменено"), qPrintable(message->text()));
        dialog->findChild<QPushButton *>("revert")->click();
        QCOMPARE(*plant.alarming().GetTuning(Nodes::NodeLink(32)).limit, 80.0);
        QCOMPARE(limit->text(), QString("80"));
    }
};

QTEST_MAIN(TestAlarmList)
#include "tst_alarm_list.moc"
