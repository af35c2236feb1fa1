#include "e2e/ConfiguratorRig.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/serial/ProjectWriter.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <csignal>
#include <future>

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

using EndToEnd::patience;

namespace {

constexpr int groups = 300; // with the signals in them enough for a write that takes its time
constexpr int perGroup = 100;

/// Hears of every file that is made in a directory, however soon it is gone.
class FolderWatch
{
public:
    explicit FolderWatch(const QString &directory)
    {
        (void)inotify_add_watch(m_descriptor, qPrintable(directory), IN_CREATE);
    }
    ~FolderWatch() { ::close(m_descriptor); }
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    /// False when none is made for a long time.
    bool awaitFile() const
    {
        pollfd waiting{m_descriptor, POLLIN, 0};
        return ::poll(&waiting, 1, patience) == 1;
    }

private:
    const int m_descriptor = inotify_init1(IN_CLOEXEC);
};

} // namespace

/// What is left of a project when its configurator is killed, whatever it was doing.
class ConfiguratorCrashTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { rig.begin(); }

    void makesAProject() { QVERIFY(rig.startNew("P")); }

    void keepsWorkWhenKilled()
    {
        QVERIFY(edit().isValid());
        const auto isKept = [this] { return !recoveries().isEmpty(); };
        QVERIFY(QTest::qWaitFor(isKept, 2 * patience)); // some time after the change
        rig.kill();
        QVERIFY(!read(file()).contains("Температура"));

        QVERIFY(rig.start(file()));
        QVERIFY(rig.press("Восстановить", "QPushButton"));
        (void)rig.grab({}, "configurator-recovered");
        QVERIFY(rig.press("Сохранить", "QToolButton"));
        QVERIFY(QTest::qWaitFor([this] { return read(file()).contains("Температура"); }, patience));
        QVERIFY(QTest::qWaitFor([this] { return recoveries().isEmpty(); }, patience));
    }

    void isForOneAtATime()
    {
        EndToEnd::ConfiguratorRig second;
        second.begin();
        const QByteArray before = read(file());
        QVERIFY(second.start(file()));
        const QByteArray holder = "(процесс " + QByteArray::number(rig.process()) + ")";
        const auto says = [&second](const QByteArray &text) {
            return read(second.path("map.json")).contains(text);
        };
        QVERIFY(QTest::qWaitFor([&] { return says("Только чтение: проект изменяет "); }, patience));
        QVERIFY(says(holder));
        QVERIFY(second.stop());
        QCOMPARE(read(file()), before);
        QVERIFY(QFile::exists(file() + ".lock"));
        rig.kill(); // leaves its mark beside the project: nobody holds it any more
        QVERIFY(QFile::exists(file() + ".lock"));
    }

    void savesWholeOrNotAtAll_data()
    {
        QTest::addColumn<int>("delay"); // us from the begin of the write
        for (const int delay : {0, 1000, 3000, 6000, 10000, 20000})
            QTest::addRow("killed after %d us", delay) << delay;
    }
    void savesWholeOrNotAtAll()
    {
        QFETCH(const int, delay);
        forgetKept();
        makeLarge();
        const int older = count(file() + ".bak");
        const int before = count(file());
        QVERIFY(older > 0 && before > older);
        QVERIFY(rig.start(file())); // the mark that a kill has left holds nobody off
        const QRect save = edit();
        QVERIFY(save.isValid());
        // Killed from a thread: the write is over before the clicking tool has ended.
        const FolderWatch folder(rig.path("projects/P"));
        auto killing =
            std::async(std::launch::async, [delay, &folder, process = pid_t(rig.process())] {
                const bool isSaving = folder.awaitFile();
                QThread::usleep(ulong(delay));
                return isSaving && ::kill(process, SIGKILL) == 0;
            });
        rig.click(save.center());
        QVERIFY(killing.get());
        rig.kill();

        const int after = count(file());
        const int kept = count(file() + ".bak");
        QVERIFY2(after >= before, qPrintable(QString::number(after)));
        QVERIFY2(kept == before || (kept == older && after == before),
                 qPrintable(QString::number(kept)));
    }

    void goesOnAfterThat()
    {
        forgetKept();
        const int before = count(file());
        QVERIFY(rig.start(file()));
        QVERIFY(edit().isValid());
        QVERIFY(rig.press("Сохранить", "QToolButton"));
        QVERIFY(QTest::qWaitFor([&] { return count(file()) > before; }, patience));
        QVERIFY(rig.stop());
        QVERIFY(!QFile::exists(file() + ".lock"));
    }

private:
    QString file() const { return rig.project("P"); }
    /// Adds something; where to save it.
    QRect edit() const
    {
        return rig.press("stepSimulator") ? rig.await("Сохранить", "QToolButton") : QRect();
    }
    static QByteArray read(const QString &path)
    {
        QFile saved(path);
        return saved.open(QIODevice::ReadOnly) ? saved.readAll() : QByteArray();
    }
    QStringList recoveries() const
    {
        return QDir(rig.path("state/operatorstation/recovery")).entryList({"*.recovery"});
    }
    /// A save that is cut off leaves the work kept before it, which the next start would offer. A
    /// process of its own writes that, even when the editor is gone.
    void forgetKept() const
    {
        const QString kept = rig.path("state/operatorstation/recovery");
        const QByteArray map = rig.path("map.json").toUtf8(); // on the command line of both
        const auto isWritten = [&map] {
            const QStringList running = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
            return std::none_of(running.begin(), running.end(), [&map](const QString &process) {
                return read("/proc/" + process + "/cmdline").contains(map);
            });
        };
        QVERIFY(QTest::qWaitFor(isWritten, patience));
        QVERIFY(QDir(kept).removeRecursively());
    }
    static std::unique_ptr<Nodes::NodesCollection> load(const QString &path)
    {
        Nodes::ProjectReader reader;
        std::unique_ptr<Nodes::NodesCollection> project;
        return reader.ReadFile(path.toStdString(), project) ? std::move(project) : nullptr;
    }
    /// Nodes of a file; -1 unless it is whole.
    static int count(const QString &path)
    {
        const auto project = load(path);
        return project ? int(project->GetNodeCount()) : -1;
    }
    /// Saves the project with so many nodes that writing it takes its time.
    void makeLarge()
    {
        const auto project = load(file());
        QVERIFY(project);
        Nodes::ConfigNode *device = project->CreateNode(Nodes::NodeType(Nodes::modbusDriver::Code),
                                                        project->GetRoot()->GetNodeAt(0));
        for (int i = 0; i < (m_isLarge ? 1 : groups); ++i) {
            auto *group = project->CreateNode(Nodes::NodeType(Nodes::modbusGroup::Code), device);
            for (int j = 0; j < perGroup; ++j)
                QVERIFY(project->CreateNode(Nodes::NodeType(Nodes::modbusSignal::Code), group));
        }
        QVERIFY(Nodes::ProjectWriter::WriteFile(*project, file().toStdString()));
        m_isLarge = true;
    }

    bool m_isLarge = false;
    EndToEnd::ConfiguratorRig rig;
};

QTEST_GUILESS_MAIN(ConfiguratorCrashTest)
#include "tst_configurator_crash.moc"
