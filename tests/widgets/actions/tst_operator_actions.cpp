#include "support/MessageBoxes.h"
#include "support/RuntimeProject.h"

#include "widgets/actions/kinds/LaunchedProcesses.h"
#include "widgets/actions/kinds/SoundPlayer.h"
#include "widgets/actions/qBasicAction.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/timers/operationTimer.h"

using namespace Widgets;

namespace {

constexpr const char *station = R"xml(
<station id="20" name="St"><alarming id="21" name="A"/>%1</station>
<memorySignal id="30" name="S" writable="true"/>
<memorySignal id="31" name="T"><alarmLimit id="32" name="high" limit="80"/></memorySignal>
<memorySignal id="33" name="N" writable="true"/>
<operationTimer id="35" name="timer" autostart="false"/>
<actionCreateEvent id="40" name="event" text="Смена принята" level="warning" node="30"/>
<actionCreateEvent id="41" name="gone" text="Узла нет" source="Пост 1" node="999"/>
<actionCreateEvent id="42" name="empty"/>
<actionNodeCommand id="45" name="start" command="start" target="35"/>
<actionNodeCommand id="46" name="reset" command="reset" target="35"/>
<actionNodeCommand id="47" name="wrong" command="start" target="30"/>
<actionNodeCommand id="48" name="vanished" command="start" target="999"/>
<actionNodeCommand id="49" name="ack" command="acknowledge" target="31"/>
<actionNodeCommand id="50" name="shelve" command="shelve" target="31" seconds="60"/>
<actionNodeCommand id="51" name="unshelve" command="unshelve" target="32"/>
<actionNodeCommand id="52" name="no alarms" command="acknowledge" target="33"/>
<actionLaunchProcess id="60" name="run" program="/bin/sh" arguments="-c&#10;test &quot;$1&quot; = 'a  b;c' &amp;&amp; exit 7&#10;x&#10;a  b;c"/>
<actionLaunchProcess id="61" name="missing" program="/nowhere/at-all"/>
<actionLaunchProcess id="62" name="unset"/>
<actionLaunchProcess id="63" name="long" program="sleep" arguments="600"/>
<actionLaunchProcess id="64" name="define" program="${tool}"/>
<actionExecuteScript id="70" name="script" script="write('N', 5) journal('Готово')"/>
<actionExecuteScript id="71" name="endless" script="while true do end"/>
<actionPlaySound id="75" name="silent" sound="no.wav"/>
<actionPlaySound id="76" name="outside" sound="../../etc/passwd"/>
<actionOverrideCursor id="80" name="wait"/><actionOverrideCursor id="81" name="x" cursor="cross"/>
<actionRestoreCursor id="82" name="restore"/>
<actionArchiverDBMgr id="85" name="files"/>)xml";

constexpr const char *noRights = R"(<authentication id="22" name="U"/><user id="23" name="op"/>)";

/// A started station with a journal in a directory of its own; modal messages are noted and closed.
class Station
{
public:
    explicit Station(bool hasUsers = false)
        : project(QString(station).arg(hasUsers ? noRights : "").toUtf8().constData())
    {
        QVERIFY(project.core.Start());
    }
    ~Station()
    {
        project.manager.reset();
        project.core.Stop();
    }

    RuntimeProject project;
    MessageBoxes boxes;
};

} // namespace

class TestOperatorActions : public QObject
{
    Q_OBJECT

private slots:
    void journals_data()
    {
        QTest::addColumn<unsigned>("action");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("message"); // "" when the operator is told nothing
        const auto row = [](const char *name, unsigned action, const char *entry,
                            const char *message) {
            QTest::newRow(name) << action << QString(entry) << QString(message);
        };
        row("event of a node", 40, "S: Смена принята", "");
        row("event of a node that is gone", 41, "Пост 1: Узла нет", "");
        row("event without a text", 42, "", "");
        row("start", 45, "timer: Команда «Пуск»", "");
        row("no such command", 47, "", "Ошибка: wrong: Неверный тип");
        row("no such target", 48, "", "Ошибка: vanished: Не найдено");
        row("no alarms", 52, "", "Ошибка: no alarms: Не найдено");
        row("program starts", 60, "run: Запущена программа «/bin/sh»", "");
        row("arguments as they are, exit code", 60, "завершилась, код 7", "");
        row("program missing", 61, "missing: Программа «/nowhere/at-all» не запущена",
            "Ошибка: Программа «/nowhere/at-all» не запущена");
        row("no program", 62, "unset: Программа не запущена", "Ошибка: unset: ");
        row("definition missing", 64, "${tool} is not defined", "Ошибка: define: Не найдено");
        row("script", 70, "script: Готово", "");
        row("script ends", 70, "script: Сценарий выполнен", "");
        row("script's write", 70, "N: Запись значения", "");
        row("endless script", 71, "endless: Сценарий прерван: Превышено ограничение", "");
    }

    void journals()
    {
        QFETCH(unsigned, action);
        QFETCH(QString, entry);
        QFETCH(QString, message);
        Station station;
        station.project.run(action);
        if (!entry.isEmpty())
            QTRY_VERIFY_WITH_TIMEOUT(station.project.journalled(entry) >= 1, 20000);
        QTRY_COMPARE(station.boxes.shown.size(), message.isEmpty() ? 0 : 1);
        QVERIFY(message.isEmpty() || station.boxes.shown.first().startsWith(message));
    }

    void timersObeyCommands()
    {
        Station station;
        const auto *timer = station.project.node<Nodes::operationTimer>(35);
        QVERIFY(timer->GetState() != Nodes::NodeState::Running);
        station.project.run(45);
        QVERIFY(timer->GetState() == Nodes::NodeState::Running);
        int changes = 0;
        const Nodes::ScopedConnection connection =
            station.project.node(35)->ConnectActivityChanged([&changes](bool) { ++changes; });
        station.project.run(46);
        QVERIFY(timer->GetState() == Nodes::NodeState::Running);
        QCOMPARE(changes, 2);
    }

    void alarmsObeyCommands()
    {
        Station station;
        const Nodes::systemAlarming *alarming = station.project.core.GetSystemAlarming();
        const auto is = [alarming](Nodes::AlarmState state) {
            const auto active = alarming->GetActiveAlarms();
            return active.size() == 1 && active.front().alarmState == state;
        };
        station.project.node<Nodes::BasicSignal>(31)->GetCell()->Publish(90.0);
        QTRY_VERIFY(is(Nodes::AlarmState::ActiveUnacked));
        station.project.run(49);
        QTRY_VERIFY(is(Nodes::AlarmState::ActiveAcked));
        station.project.run(50);
        QTRY_VERIFY(is(Nodes::AlarmState::Shelved));
        station.project.run(51);
        QTRY_VERIFY(is(Nodes::AlarmState::ActiveAcked));
        QVERIFY(station.boxes.shown.isEmpty());
        station.project.run(49); // acknowledged already
        QCOMPARE(station.boxes.shown, QStringList("Ошибка: ack: Не найдено"));
    }

    void missingRightsAreTold_data()
    {
        QTest::addColumn<unsigned>("action");
        QTest::newRow("command") << 45u;
        QTest::newRow("acknowledge") << 49u;
        QTest::newRow("shelve") << 50u;
        QTest::newRow("launch") << 60u;
        QTest::newRow("write of a script") << 70u;
        QTest::newRow("files of the archive") << 85u;
    }

    void missingRightsAreTold()
    {
        QFETCH(unsigned, action);
        Station station(true);
        station.project.push(action);
        QTRY_COMPARE(station.boxes.shown,
                     QStringList("Ошибка: Недостаточно прав для выполнения действия"));
        QVERIFY(station.project.journalled("нет прав") +
                    station.project.journalled("Запись отклонена") >=
                1);
        QCOMPARE(station.project.journalled("Запущена") + station.project.journalled("Готово"), 0);
        QVERIFY(station.project.node(35)->GetState() != Nodes::NodeState::Running);
    }

    void programsAreBoundedAndEndWithTheStation()
    {
        Station station;
        const int tooMany = LaunchedProcesses::MaximumRunning + 1;
        for (int i = 0; i < tooMany; ++i)
            station.project.push(63);
        QTRY_COMPARE(station.boxes.shown.size(), 1);
        QCOMPARE(station.project.journalled("too many programs"), 1);
        QTRY_COMPARE(station.project.journalled("Запущена программа «sleep»"), tooMany - 1);
        station.project.manager.reset();
        QCOMPARE(station.project.journalled("«sleep» завершается вместе со станцией"), tooMany - 1);
    }

    void endlessScriptsLeaveTheGuiLive()
    {
        Station station;
        station.project.manager->PushActions(Nodes::NodeLinks(99, Nodes::NodeLink(71)));
        station.project.run(71); // the GUI thread has worked all of them off
        QTRY_VERIFY_WITH_TIMEOUT(station.project.journalled("Сценарий прерван: Превышено") >= 1,
                                 20000);
        const int runs = station.project.journalled("Сценарий прерван");
        QVERIFY2(station.project.journalled("Сценарий не запущен") <= runs + 1,
                 "told more than once a run");
        QVERIFY(runs < 100);
    }

    void aMissingSoundIsToldOnce()
    {
        Station station;
        for (const unsigned action : {75u, 75u, 76u})
            station.project.run(action);
        QCOMPARE(station.project.journalled("silent: Нет звукового файла «no.wav»"), 1);
        QCOMPARE(station.project.journalled("outside: Нет звукового файла"), 1);
        Nodes::ResourceLink::SetBaseDirectory(station.project.data.path().toStdString());
        QFile file(station.project.data.filePath("no.wav"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        station.project.run(
            75); // there, though no sound: nothing hangs, with or without an audio device
        QCOMPARE(station.project.journalled("silent: Нет звукового файла"), 1);
        QVERIFY(file.remove());
        station.project.run(75);
        QCOMPARE(station.project.journalled("silent: Нет звукового файла"), 2);
    }

    void aFileThatIsNoSoundIsTold()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath("bad.wav"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(100, 'x')) == 100);
        file.close();
        SoundPlayer player(nullptr);
        for (int i = 0; i < 2; ++i) { // read anew each time: it may have been replaced
            QVector<bool> told;
            player.play(file.fileName(), [&told](bool isSound) { told << isSound; });
            QTRY_COMPARE(told, QVector<bool>{false});
        }
    }

    void cursorsNest()
    {
        Station station;
        const auto shape = [] {
            const QCursor *cursor = QGuiApplication::overrideCursor();
            return cursor ? int(cursor->shape()) : -1;
        };
        QGuiApplication::setOverrideCursor(Qt::IBeamCursor); // the library's own
        const std::pair<unsigned, int> steps[] = {{82, Qt::IBeamCursor}, {80, Qt::WaitCursor},
                                                  {81, Qt::CrossCursor}, {82, Qt::WaitCursor},
                                                  {82, Qt::IBeamCursor}, {82, Qt::IBeamCursor}};
        for (const auto &[action, expected] : steps) {
            station.project.run(action);
            QCOMPARE(shape(), expected);
        }
        QGuiApplication::restoreOverrideCursor();
    }
};

QTEST_MAIN(TestOperatorActions)
#include "tst_operator_actions.moc"
