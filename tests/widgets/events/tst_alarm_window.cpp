#include "support/MessageBoxes.h"
#include "support/Rows.h"
#include "support/RuntimeProject.h"

#include "widgets/actions/running/WindowManagerWorkerThread.h"
#include "widgets/events/AlarmDialog.h"
#include "widgets/events/AlarmSound.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/filter/AlarmFilterBar.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/links/ResourceLink.h"
#include "utils/convert/TimeConversions.h"

#include <QAbstractButton>
#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

#include <thread>

using namespace Widgets;
using Nodes::AlarmState;

Q_DECLARE_METATYPE(Nodes::AlarmState)

namespace {

constexpr int patience = 60000; // ms, on a loaded machine

constexpr const char *plant = R"xml(
<station id="20" name="St"><alarming id="21" name="A" %1>%2</alarming>%3</station>
<actionShowAlarms id="40" name="show"/>
<memorySignal id="31" name="T"><alarmLimit id="32" name="high" limit="80" sound="a.wav"/></memorySignal>
<memorySignal id="33" name="P"><alarmLimit id="34" name="high" limit="80" sound="no.wav"/></memorySignal>)xml";

constexpr const char *noRights = R"(<authentication id="22" name="U"/><user id="23" name="op"/>)";

struct Plant
{
    explicit Plant(const char *settings = "", const char *columns = "", const char *users = "")
        : project(QString(plant).arg(settings, columns, users).toUtf8().constData())
    {
        QFile sound(project.data.filePath("a.wav"));
        QVERIFY(sound.open(QIODevice::WriteOnly));
        Nodes::ResourceLink::SetBaseDirectory(project.data.path().toStdString());
    }
    ~Plant()
    {
        project.manager.reset();
        project.core.Stop();
    }
    void start() { QVERIFY(project.core.Start()); }
    AlarmWindow &window() const { return *project.manager->GetWindowAlarms(); }
    ModelManager &manager() const { return window().dialog().manager(); }
    ModelAlarms &model() const { return manager().model(); }
    QVariant role(int row, int role, int column = 0) const
    {
        return model().index(row, column).data(role);
    }
    Nodes::BasicEvent event(AlarmState state, unsigned long alarm = 32,
                            Nodes::EventType type = Nodes::TypeAlarmActive) const
    {
        Nodes::BasicEvent event;
        event.time = ++lastTime;
        event.type = type;
        event.alarmState = state;
        event.sourceNode = Nodes::NodeLink(alarm);
        event.priority = 2;
        event.text = "Перегрев";
        return event;
    }
    void receive(AlarmState state, unsigned long alarm = 32,
                 Nodes::EventType type = Nodes::TypeAlarmActive) const
    {
        window().ReceiveAlarm(event(state, alarm, type));
    }
    /// The window is up and what it has is painted.
    void awaitPicture() const
    {
        TableAlarms &table = window().dialog().table();
        QTRY_VERIFY(window().isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&window())); // nothing is painted before
        table.viewport()->repaint();
        QCOMPARE(table.seenRevision(), model().revision());
    }
    bool isAcknowledged(unsigned long alarm) const
    {
        return model().row(model().rowOf(alarm)).isAcknowledged;
    }
    /// Where the alarm's row stands in the table.
    QPoint place(unsigned long alarm) const
    {
        const TableAlarms &table = window().dialog().table();
        const QModelIndex row = model().index(model().rowOf(alarm), 0);
        return table.visualRect(manager().sorting().mapFromSource(row)).center();
    }
    template <class Button = QPushButton> Button *button(const QString &text) const
    {
        for (auto *button : window().findChildren<Button *>()) {
            if (button->text() == text)
                return button;
        }
        return nullptr;
    }
    std::vector<Nodes::BasicEvent> acknowledgements() const
    {
        (void)project.core.GetJournal().Flush();
        Nodes::JournalQuery query;
        query.source = "Acknowledgement";
        std::vector<Nodes::BasicEvent> events;
        (void)project.core.GetJournal().Query(query, events);
        return events;
    }

    mutable Nodes::Timestamp lastTime = 1700000000000000;
    RuntimeProject project;
};

} // namespace

class TestAlarmWindow : public QObject
{
    Q_OBJECT

private slots:
    void takesAlarms_data()
    {
        // A code of 0: no row in the table.
        const Rows<AlarmState, int, int, bool, bool> row("state", "type", "code", "isAcknowledged",
                                                         "comesUp");
        row("active", AlarmState::ActiveUnacked, Nodes::TypeAlarmActive, 3, false, true);
        row("acked", AlarmState::ActiveAcked, Nodes::TypeAcknowledgement, 3, true, false);
        row("active again", AlarmState::ActiveAcked, Nodes::TypeAlarmActive, 3, true, true);
        row("returned", AlarmState::ReturnedUnacked, Nodes::TypeAlarmActive, 2, false, true);
        row("normal", AlarmState::Normal, Nodes::TypeAlarmActive, 0, false, false);
        row("shelved", AlarmState::Shelved, Nodes::TypeAlarmActive, 0, false, false);
        row("no alarm", AlarmState::None, Nodes::TypeAlarmActive, 0, false, false);
    }
    void takesAlarms()
    {
        QFETCH(AlarmState, state);
        QFETCH(int, type);
        QFETCH(int, code);
        Plant plant;
        QAbstractItemModelTester tester(&plant.model());
        plant.receive(state, 32, Nodes::EventType(type));
        QCOMPARE(plant.model().rowCount(), code == 0 ? 0 : 1);
        if (code != 0) {
            QCOMPARE(plant.role(0, ModelAlarms::StateCodeRole).toInt(), code);
            QTEST(plant.role(0, ModelAlarms::AcknowledgedRole).toBool(), "isAcknowledged");
            const bool isGray =
                plant.role(0, Qt::ForegroundRole).value<QColor>() == QColor(Qt::gray);
            QCOMPARE(isGray, code == 2);
        }
        QTEST(plant.window().isComingUp(), "comesUp");
        plant.receive(AlarmState::Suppressed);
        QCOMPARE(plant.model().rowCount(), 0);
    }
    void keepsWhatIsNotDone()
    {
        Plant plant;
        plant.receive(AlarmState::ActiveUnacked);
        plant.receive(AlarmState::ActiveUnacked, 34);
        plant.receive(AlarmState::ReturnedUnacked);
        QCOMPARE(plant.model().rowCount(), 2);
        plant.receive(AlarmState::Normal);
        QCOMPARE(plant.model().rowCount(), 1);
        QCOMPARE(plant.role(0, ModelAlarms::SourceRole).value<Nodes::NodeLink>().GetNodeId(), 34UL);
        plant.button<QCheckBox>("Удалять неактивные")->setChecked(false);
        plant.receive(AlarmState::Normal, 34);
        QCOMPARE(plant.model().rowCount(), 1);
        QAbstractItemModel *shown = plant.window().dialog().table().model();
        QCOMPARE(shown->rowCount(), 1);
        plant.button<QCheckBox>("Скрывать неактивные")->setChecked(true);
        QCOMPARE(shown->rowCount(), 0);
        plant.button<QCheckBox>("Удалять неактивные")->setChecked(true);
        QCOMPARE(plant.model().rowCount(), 0);
    }
    void acknowledgesOnce_data()
    {
        const Rows<QString> row("way");
        row("all", "Квитировать все");
        row("selected", "Квитировать выбранный");
        row("double click", "");
    }
    void acknowledgesOnce()
    {
        QFETCH(QString, way);
        Plant plant;
        plant.start();
        MessageBoxes boxes;
        plant.button("Квитировать все")->click();
        plant.project.publish(31, 90.0);
        QTRY_VERIFY(plant.window().isVisible());
        TableAlarms &table = plant.window().dialog().table();
        table.selectRow(0);
        for (int time = 0; time < 2; ++time) {
            const QPoint row = table.visualRect(table.model()->index(0, 0)).center();
            if (way.isEmpty())
                QTest::mouseDClick(table.viewport(), Qt::LeftButton, Qt::NoModifier, row);
            else
                QTest::mouseClick(plant.button(way), Qt::LeftButton);
            QCOMPARE(plant.role(0, ModelAlarms::SoundStateRole).toInt(), int(SoundAcknowledged));
        }
        QCOMPARE(plant.role(0, Qt::DisplayRole, 1).toString(),
                 QString("Активные квитированные, приоритет 3"));
        QTRY_COMPARE(plant.acknowledgements().size(), std::size_t(1));
        const auto entries = plant.acknowledgements();
        QCOMPARE(int(entries[0].level), 4);
        QCOMPARE(int(entries[0].type), 5);
        QCOMPARE(entries[0].text, std::string("Квитирование события \"T: high\""));
        QCOMPARE(boxes.shown, QStringList());
        plant.project.publish(31, 10.0);
        QTRY_COMPARE(plant.model().rowCount(), 0);
    }
    void acknowledgesWhatWasSeen_data()
    {
        const Rows<QString, AlarmState> row("button", "meanwhile");
        row("all", "Квитировать все", AlarmState::ReturnedUnacked);
        row("selected", "Квитировать выбранный", AlarmState::ReturnedUnacked);
        row("selected, anew", "Квитировать выбранный", AlarmState::ActiveUnacked);
    }
    // While the button is down a further alarm comes, and the first one returns or comes anew.
    void acknowledgesWhatWasSeen()
    {
        QFETCH(QString, button);
        QFETCH(AlarmState, meanwhile);
        Plant plant;
        plant.start();
        plant.project.publish(31, 90.0);
        QTRY_COMPARE(plant.model().rowCount(), 1);
        plant.awaitPicture();
        plant.window().dialog().table().selectRow(0);
        const unsigned long before = plant.model().row(0).event().occurrence;
        QTest::mousePress(plant.button(button), Qt::LeftButton);
        plant.project.publish(33, 90.0);
        plant.project.publish(31, 10.0);
        if (meanwhile == AlarmState::ActiveUnacked)
            plant.project.publish(31, 90.0);
        QTRY_COMPARE(plant.model().rowCount(), 2);
        QTRY_COMPARE(int(plant.model().row(0).state()), int(meanwhile));
        const bool isAnew = meanwhile == AlarmState::ActiveUnacked;
        QTRY_COMPARE(plant.model().row(0).event().occurrence != before, isAnew);
        QTest::mouseRelease(plant.button(button), Qt::LeftButton);
        QTRY_COMPARE(plant.acknowledgements().size(), std::size_t(isAnew ? 0 : 1));
        QTRY_COMPARE(plant.model().rowCount(), isAnew ? 2 : 1);
        QVERIFY(!plant.isAcknowledged(34));
    }
    // Between both clicks, and already before the first is handled, other rows push the one away
    // that stood there on the display.
    void meansTheRowPressed()
    {
        Plant plant;
        plant.start();
        plant.receive(AlarmState::ActiveUnacked);
        plant.awaitPicture();
        QWidget *viewport = plant.window().dialog().table().viewport();
        const QPoint place = plant.place(32);
        plant.receive(AlarmState::ActiveUnacked, 34);
        QVERIFY(plant.place(34) == place && plant.place(32) != place);
        const auto click = [&](QEvent::Type type, unsigned long time) {
            QMouseEvent event(type, place, Qt::LeftButton, Qt::LeftButton, {});
            event.setTimestamp(time);
            QCoreApplication::sendEvent(viewport, &event);
        };
        click(QEvent::MouseButtonPress, 1000);
        click(QEvent::MouseButtonRelease, 1080);
        plant.receive(AlarmState::ActiveUnacked, 36);
        plant.awaitPicture();
        click(QEvent::MouseButtonDblClick, 1200);
        QVERIFY(plant.isAcknowledged(32) && !plant.isAcknowledged(34) && !plant.isAcknowledged(36));
        const TableAlarms &table = plant.window().dialog().table();
        QCOMPARE(plant.model().row(table.selectedRow().row()).alarm(), 32UL);
        plant.awaitPicture();
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, plant.place(34));
        QVERIFY(plant.isAcknowledged(34) && !plant.isAcknowledged(36));
    }
    void refusesVisibly()
    {
        Plant plant("", "", noRights);
        plant.start();
        plant.project.publish(31, 90.0);
        plant.project.publish(33, 90.0);
        QTRY_COMPARE(plant.model().rowCount(), 2);
        MessageBoxes boxes;
        plant.button("Квитировать все")->click();
        QCOMPARE(boxes.shown, QStringList("Ошибка: Недостаточно прав для выполнения действия"));
        for (int row = 0; row < 2; ++row)
            QVERIFY(!plant.role(row, ModelAlarms::AcknowledgedRole).toBool());
        QVERIFY(plant.acknowledgements().empty());
    }
    void soundsUntilAcknowledged()
    {
        Plant plant;
        plant.start();
        const QStringList file(plant.project.data.filePath("a.wav"));
        plant.receive(AlarmState::ActiveUnacked, 34); // its file does not exist
        plant.receive(AlarmState::ActiveUnacked);
        QCOMPARE(plant.role(0, ModelAlarms::SoundStateRole).toInt(), int(SoundPlaying));
        QCOMPARE(plant.role(1, ModelAlarms::SoundFileRole).toString(), file.first());
        const AlarmSound &sound = plant.manager().sound();
        const QStringList withTone{file.first(), sound.tone(2)};
        QTRY_COMPARE(sound.audible(), withTone);
        QTRY_VERIFY(plant.window().isVisible());
        plant.manager().setMuted(true);
        plant.receive(AlarmState::ReturnedUnacked);
        plant.manager().acknowledge(plant.model().index(0, 0));
        QCOMPARE(sound.audible(), file);
        plant.manager().acknowledge(plant.model().index(1, 0));
        QCOMPARE(sound.audible(), QStringList());
    }
    void obeysSettings()
    {
        Plant plant(R"(acknowledge="false" soundButton="hidden" window="false" buttonSize="60")",
                    R"(<alarmColumn id="51" name="Что" column="text" width="500"/>
                   <alarmColumn id="52" name="Тяжесть" column="level"/>)");
        plant.receive(AlarmState::ActiveUnacked);
        QCOMPARE(plant.model().columnCount(), 2);
        QCOMPARE(plant.model().headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(),
                 QString("Тяжесть"));
        QCOMPARE(plant.role(0, Qt::DisplayRole).toString(), QString("Перегрев"));
        QCOMPARE(plant.role(0, Qt::DisplayRole, 1).toString(), QString("Тревога"));
        QVERIFY(!plant.button("Квитировать все") && !plant.button("Квитировать выбранный"));
        TableAlarms &table = plant.window().dialog().table();
        QSignalSpy clicked(&table, &TableAlarms::rowDoubleClicked);
        QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, plant.place(32));
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!plant.isAcknowledged(32));
        QVERIFY(plant.button("")->isHidden());
        QCOMPARE(plant.button("Закрыть")->height(), 60);
        plant.window().open();
        QVERIFY(plant.window().isHidden());
    }
    void sortsWhatWaitsFirst()
    {
        Plant plant;
        plant.receive(AlarmState::ActiveAcked);
        plant.receive(AlarmState::ActiveUnacked, 34);
        TableAlarms &table = plant.window().dialog().table();
        const auto first = [&] {
            const QModelIndex index = table.model()->index(0, 0);
            return index.data(ModelAlarms::SourceRole).value<Nodes::NodeLink>().GetNodeId();
        };
        QCOMPARE(first(), 34UL);
        plant.receive(AlarmState::ActiveAcked, 34);
        plant.receive(AlarmState::ActiveAcked);
        QCOMPARE(first(), 32UL); // the newest of equals
        emit table.horizontalHeader()->sectionClicked(1);
        emit table.horizontalHeader()->sectionClicked(2);
        QCOMPARE(first(), 34UL);
        emit table.horizontalHeader()->sectionClicked(2);
        QCOMPARE(first(), 32UL);
    }
    void keepsTheOrderOfRaising()
    {
        Plant plant;
        QStringList shown;
        const auto times = [&] {
            const QAbstractItemModel *rows = plant.window().dialog().table().model();
            QStringList texts;
            for (int row = 0; row < rows->rowCount(); ++row)
                texts << rows->index(row, 2).data().toString();
            return texts;
        };
        for (const unsigned long alarm : {34UL, 32UL}) {
            Nodes::BasicEvent event = plant.event(AlarmState::ActiveUnacked, alarm);
            event.raised = event.time;
            plant.window().ReceiveAlarm(event);
            shown.prepend(Utils::timeText(event.raised, Utils::tableTimeFormat));
            event.time = plant.lastTime += 1000000; // it is acknowledged elsewhere
            event.alarmState = AlarmState::ActiveAcked;
            plant.window().ReceiveAlarm(event);
            plant.lastTime += 1000000;
        }
        QCOMPARE(times(), shown);
        Nodes::BasicEvent doubtful = plant.model().row(plant.model().rowOf(34)).event();
        doubtful.text += " (значение недостоверно)";
        doubtful.time = ++plant.lastTime;
        plant.window().ReceiveAlarm(doubtful);
        QCOMPARE(times(), shown);
    }
    void ignoresWhatIsOvertaken()
    {
        Plant plant;
        plant.start();
        Nodes::BasicEvent event = plant.event(AlarmState::ActiveUnacked);
        event.occurrence = 5;
        plant.window().ReceiveAlarm(event);
        plant.manager().acknowledge(Nodes::AlarmOccurrences{{event.sourceNode, 4}});
        QVERIFY(!plant.isAcknowledged(32));
        QVERIFY(plant.model().acknowledge({0}));
        event.time = ++plant.lastTime;
        plant.window().ReceiveAlarm(event); // on its way since before the acknowledgement
        QVERIFY(plant.isAcknowledged(32));
        event.occurrence = 4;
        plant.window().ReceiveAlarm(event);
        QCOMPARE(plant.model().row(0).event().occurrence, 5UL);
        event.occurrence = 6;
        plant.window().ReceiveAlarm(event);
        QVERIFY(!plant.isAcknowledged(32));
    }
    void takesBatches_data()
    {
        const Rows<int> row("stride");
        row("every second row goes", 2);
        row("a few go", 150);
    }
    // The selection stays, and the rows in sight stand where they stood, however many others are
    // removed above them; each signal of the models is right.
    void takesBatches()
    {
        QFETCH(int, stride);
        Plant plant("", R"(<alarmColumn id="51" name="Что" column="text"/>)");
        plant.start();
        QAbstractItemModelTester tester(&plant.model());
        QAbstractItemModelTester sortedTester(&plant.manager().sorting());
        std::vector<Nodes::BasicEvent> batch;
        for (unsigned long alarm = 1000; alarm < 1400; ++alarm)
            batch.push_back(plant.event(AlarmState::ActiveUnacked, alarm));
        plant.window().ReceiveAlarms(batch);
        plant.awaitPicture();
        TableAlarms &table = plant.window().dialog().table();
        QCOMPARE(table.model()->rowCount(), 400);
        table.selectRow(200);
        plant.window().resize(640, 500);
        table.verticalScrollBar()->setValue(2010);
        plant.awaitPicture();
        const unsigned long second = 1000 + 2 * unsigned(table.rowAt(0) / 2 + 1);
        const QPoint read = plant.place(second);
        QVERIFY(read.y() > 0 && read.y() < table.viewport()->height());
        batch.clear();
        for (unsigned long alarm = 1000; alarm < 1400; ++alarm) {
            if (alarm % unsigned(stride) == 1)
                batch.push_back(plant.event(AlarmState::Normal, alarm));
        }
        const int left = 400 - int(batch.size()) + 1;
        batch.push_back(plant.event(AlarmState::ActiveUnacked, 1051)); // and it is back
        batch.push_back(plant.event(AlarmState::Normal, 2000));
        plant.window().ReceiveAlarms(batch);
        QCOMPARE(plant.model().rowCount(), left);
        QCOMPARE(plant.model().row(table.selectedRow().row()).alarm(), 1200UL);
        QCOMPARE(plant.place(second), read);
        QSignalSpy changes(&plant.model(), &QAbstractItemModel::dataChanged);
        plant.manager().acknowledgeAll();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(plant.model().row(table.selectedRow().row()).alarm(), 1200UL);
        QCOMPARE(plant.place(second), read);
        for (int row = 0; row < left; ++row)
            QCOMPARE(plant.model().rowOf(plant.model().row(row).alarm()), row);
    }
    void floodArrivesWhole()
    {
        Plant plant;
        std::thread([&] {
            for (unsigned long i = 0; i < 1000; ++i) {
                Nodes::BasicEvent event;
                event.sourceNode = Nodes::NodeLink(1000 + i);
                event.alarmState = AlarmState::ActiveUnacked;
                emit plant.project.manager->alarmFired(event);
            }
        }).join();
        QTRY_COMPARE_WITH_TIMEOUT(plant.model().rowCount(), 1000, patience);
        QTRY_VERIFY(plant.window().isVisible());
    }
    void waitsForNoAction()
    {
        Plant plant;
        plant.start();
        auto *worker = plant.project.manager->findChild<WindowManagerWorkerThread *>();
        QSignalSpy actions(worker, &WindowManagerWorkerThread::ActionExecuted);
        QSignalSpy told(plant.project.manager.get(), &WindowManager::alarmFired);
        plant.project.publish(31, 90.0);
        QTRY_COMPARE(plant.model().rowCount(), 1);
        QCOMPARE(told.count(), 1);
        plant.project.run(40);
        QCOMPARE(actions.count(), 1); // that one
    }
    void keepsItsPlace()
    {
        Plant plant;
        plant.receive(AlarmState::ActiveUnacked);
        AlarmWindow &window = plant.window();
        QTRY_VERIFY(window.isVisible());
        const QRect place(40, 60, 640, 400);
        window.setGeometry(place);
        plant.button("Закрыть")->click();
        QVERIFY(window.isHidden());
        window.setGeometry(0, 0, 500, 300);
        plant.receive(AlarmState::ActiveUnacked, 34);
        QTRY_VERIFY(window.isVisible());
        QCOMPARE(window.geometry(), place);
        // Another station of the same user has its own.
        Plant other;
        other.receive(AlarmState::ActiveUnacked);
        QTRY_VERIFY(other.window().isVisible());
        QVERIFY(other.window().geometry() != place);
    }
    // However often the station starts.
    void keepsItsHeightOverARestart()
    {
        const QRect place(0, 0, 1200, 400);
        Plant first;
        first.receive(AlarmState::ActiveUnacked);
        QTRY_VERIFY(first.window().isVisible());
        first.window().setGeometry(place);
        first.button("Закрыть")->click();
        Plant second;
        QVERIFY(QFile::copy(first.project.data.filePath("config.json"),
                            second.project.data.filePath("config.json")));
        second.receive(AlarmState::ActiveUnacked);
        QTRY_VERIFY(second.window().isVisible());
        const auto *counts = second.window().findChild<QLabel *>("counts");
        second.receive(AlarmState::ActiveUnacked, 34);
        QTRY_VERIFY(counts->text().endsWith("ждут: 2"));
        QCOMPARE(second.window().height(), place.height());
    }
    void showsAllButtons_data()
    {
        const Rows<int, QString, bool> row("room", "settings", "isOneRow");
        row("of a scaled display", 1000, "", true);
        row("narrow", 640, "", false);
        row("narrow, large", 480, R"(buttonSize="120")", false);
    }
    // At its least size the window cuts and covers no button.
    void showsAllButtons()
    {
        QFETCH(int, room);
        QFETCH(QString, settings);
        Plant plant(settings.toLatin1());
        AlarmDialog &dialog = plant.window().dialog();
        dialog.setRoom(room);
        plant.window().show();
        plant.window().resize(plant.window().minimumSizeHint());
        QVERIFY(dialog.width() <= room);
        QRegion taken;
        QSet<int> tops;
        const TableAlarms &table = dialog.table();
        const int ofText = table.columnViewportPosition(4) + 100;
        QVERIFY(room < 1000 || ofText < table.viewport()->width());
        for (const QWidget *control : dialog.findChildren<QAbstractButton *>()) {
            if (!control->isVisible() || control->parent() != &dialog)
                continue;
            const QRect place = control->geometry();
            QVERIFY(dialog.rect().contains(place) && !taken.intersects(place));
            QVERIFY(place.width() >= control->sizeHint().width());
            taken += place;
            tops.insert(place.top());
        }
        QTEST(tops.size() == 1, "isOneRow");
    }
    void toldOfEarlierAlarms()
    {
        Plant plant;
        plant.project.manager.reset();
        plant.start();
        plant.project.publish(31, 90.0);
        const auto *alarming = plant.project.node<Nodes::systemAlarming>(21);
        QTRY_COMPARE(alarming->GetActiveAlarms().size(), std::size_t(1));
        plant.project.manager = std::make_unique<WindowManager>(&plant.project.core);
        plant.project.manager->Start();
        QTRY_VERIFY(plant.window().isVisible());
        QCOMPARE(plant.model().rowCount(), 1);
        plant.button("Закрыть")->click();
        plant.project.push(40);
        QTRY_VERIFY(plant.window().isVisible());
    }
};

QTEST_MAIN(TestAlarmWindow)
#include "tst_alarm_window.moc"
