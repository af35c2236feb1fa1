// A storm of alarms with the alarm window, a banner and an alarm list open: how long the GUI thread
// stands still, how long an alarm and a click take, whether anything is lost; then the
// acknowledgement of all.
//
//     bench_alarm_window [--seconds N] [--rate ALARMS_A_SECOND] [--alarms N]
//
// Budget: 10,000 alarms a second for 60 s from 10,000 alarms, no stall over 50 ms, a click within
// 100 ms, all of 10,000 acknowledged within 300 ms.
#include "widgets/alarmlist/qwidgetAlarmList.h"
#include "widgets/elements/alarms/qwidgetAlarmBanner.h"
#include "widgets/events/AlarmDialog.h"
#include "widgets/events/AlarmWindow.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/ModelManager.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/ValueCell.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"
#include "nodes/visual/elements/widgetAlarmList.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <set>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
constexpr unsigned long firstSignal = 1000;
constexpr unsigned long probeSignal = 12; // flips apart from the storm
constexpr unsigned long probeAlarm = 13;
constexpr unsigned long clickedSignal = 10;
constexpr unsigned long clickAction = 11;
constexpr unsigned long bannerNode = 15;
constexpr unsigned long listNode = 16;

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Times of one kind, milliseconds.
struct Times
{
    void add(Clock::duration time) { all.push_back(milliseconds(time)); }
    void print(const char *what)
    {
        std::sort(all.begin(), all.end());
        if (!all.empty())
            std::printf("%-28s median %7.1f ms, longest %7.1f ms, %zu times\n", what,
                        all[all.size() / 2], all.back(), all.size());
    }
    std::vector<double> all;
};

/// With `isChanging`, every second alarm needs no acknowledgement, so that rows come and go.
std::string projectText(int alarms, bool isChanging)
{
    std::string text = R"(<project format="1" id="1" name="P"><station id="2" name="S">)"
                       R"(<alarming id="3" name="A"/></station>)"
                       R"(<memorySignal id="10" name="C" writable="true"/>)"
                       R"(<actionWriteValue id="11" name="W" signal="10" value="1"/>)"
                       R"(<memorySignal id="12" name="Z"><alarmDiscrete id="13" name="Z" )"
                       R"(value="1" priority="1" ackRequired="false"/></memorySignal>)"
                       R"(<alarmBanner id="15" name="B"/>)"
                       R"(<alarmList id="16" name="L"/>)"
                       R"(<folder id="14" name="F">)";
    for (int i = 0; i < alarms; ++i) {
        const std::string id = std::to_string(firstSignal + 2 * unsigned(i));
        const std::string alarm = std::to_string(firstSignal + 2 * unsigned(i) + 1);
        text += R"(<memorySignal id=")" + id + R"(" name="s)" + id + R"("><alarmDiscrete id=")" +
                alarm + R"(" name="a" value="1" text="Насос )" + id +
                R"(: перегрев подшипника" priority=")" + std::to_string(i % 4 + 1) +
                R"(" ackRequired=")" + (isChanging && i % 2 ? "false" : "true") +
                R"("/></memorySignal>)";
    }
    return text + "</folder></project>";
}

/// CPU time of this thread: what it would have taken on a machine of its own.
std::chrono::nanoseconds cpuTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// Notes the longest time between two turns of the event loop, by the clock and by the work done.
class Heart : public QObject
{
public:
    Heart()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, &Heart::beat);
        m_timer.start(1);
    }
    void begin()
    {
        m_last = Clock::now();
        m_lastWork = cpuTime();
        longest = {};
        longestWork = {};
    }
    Clock::duration longest{};
    std::chrono::nanoseconds longestWork{};

private:
    void beat()
    {
        const auto now = Clock::now();
        longest = std::max(longest, now - m_last);
        m_last = now;
        const auto work = cpuTime();
        longestWork = std::max(longestWork, work - m_lastWork);
        m_lastWork = work;
    }
    QTimer m_timer;
    Clock::time_point m_last = Clock::now();
    std::chrono::nanoseconds m_lastWork = cpuTime();
};

/// A station at run time with its alarm window.
class Station
{
public:
    Station(int alarms, bool isChanging) : alarmCount(alarms)
    {
        std::unique_ptr<Nodes::NodesCollection> project;
        Nodes::ProjectReader reader;
        const Nodes::Result read =
            reader.ReadBuffer(projectText(alarms, isChanging), "bench", project);
        if (!read)
            qFatal("%s", read.ToString().c_str());
        core.AdoptProject(std::move(project), "bench.xml");
        core.SetWorkMode(Nodes::WorkModeRuntime);
        core.SetDataDirectory(m_directory.path().toStdString());
        manager = std::make_unique<Widgets::WindowManager>(&core);
        for (int i = 0; i < alarms; ++i)
            cells.push_back(cell(firstSignal + 2 * unsigned(i)));
        if (!core.Start())
            qFatal("the core does not start");
        manager->Start();
        banner = show<Widgets::qwidgetAlarmBanner, Nodes::widgetAlarmBanner>(bannerNode, {900, 48});
        list = show<Widgets::qwidgetAlarmList, Nodes::widgetAlarmList>(listNode, {1200, 600});
    }
    ~Station()
    {
        banner->stop();
        list->stop();
        banner.reset();
        list.reset();
        manager.reset();
        core.Stop();
    }
    std::shared_ptr<Nodes::ValueCell> cell(unsigned long id) const
    {
        auto *signal = dynamic_cast<Nodes::BasicSignal *>(core.GetNodesCollection()->FindNode(id));
        return signal->GetCell();
    }
    template <class Element, class Node>
    std::unique_ptr<Element> show(unsigned long id, const QSize &size) const
    {
        auto *node = dynamic_cast<Node *>(core.GetNodesCollection()->FindNode(id));
        auto element = std::make_unique<Element>(node, nullptr);
        element->resize(size);
        element->start();
        element->show();
        return element;
    }
    Widgets::AlarmWindow &window() const { return *manager->GetWindowAlarms(); }
    Widgets::ModelAlarms &model() const { return window().dialog().manager().model(); }
    /// Rows that differ from what the alarm system has.
    int differences() const
    {
        std::set<std::pair<unsigned long, int>> active;
        std::set<std::pair<unsigned long, int>> shown;
        for (const Nodes::BasicEvent &event : core.GetSystemAlarming()->GetActiveAlarms())
            active.emplace(event.sourceNode.GetNodeId(), int(event.alarmState));
        for (int row = 0; row < model().rowCount(); ++row)
            shown.emplace(model().row(row).alarm(), int(model().row(row).state()));
        std::vector<std::pair<unsigned long, int>> different;
        std::set_symmetric_difference(active.begin(), active.end(), shown.begin(), shown.end(),
                                      std::back_inserter(different));
        return int(different.size());
    }

    int alarmCount;
    Nodes::systemCore core;
    std::unique_ptr<Widgets::WindowManager> manager;
    std::unique_ptr<Widgets::qwidgetAlarmBanner> banner;
    std::unique_ptr<Widgets::qwidgetAlarmList> list;
    std::vector<std::shared_ptr<Nodes::ValueCell>> cells;

private:
    QTemporaryDir m_directory;
};

/// Runs the event loop until it is so, at most for a minute.
template <class Condition> bool await(Condition isSo)
{
    const auto begun = Clock::now();
    while (!isSo()) {
        if (Clock::now() - begun > std::chrono::minutes(1))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::usleep(200);
    }
    return true;
}

/// Publishes values that raise and clear alarms, from a thread of its own.
class Storm
{
public:
    Storm(Station &station, int rate, int seconds)
        : m_thread([this, &station, rate, seconds] { run(station, rate, seconds); })
    {
    }
    ~Storm() { m_thread.join(); }
    bool isOver() const { return m_isOver; }
    int published() const { return m_published; }

private:
    void run(Station &station, int rate, int seconds)
    {
        std::vector<bool> isRaised(station.cells.size(), true);
        const auto begun = Clock::now();
        const int total = rate * seconds;
        unsigned random = 1;
        while (m_published < total) {
            const auto due =
                begun + std::chrono::microseconds(qint64(m_published) * 1000000 / rate);
            std::this_thread::sleep_until(due);
            for (int i = 0; i < rate / 1000 && m_published < total; ++i, ++m_published) {
                random = random * 1664525u + 1013904223u;
                const std::size_t index = (random >> 8) % station.cells.size();
                isRaised[index] = !isRaised[index];
                station.cells[index]->Publish(isRaised[index] ? 1.0 : 0.0);
            }
        }
        m_isOver = true;
    }
    std::atomic<bool> m_isOver{false};
    std::atomic<int> m_published{0};
    std::thread m_thread;
};

/// Measures one thing again and again while the storm lasts: begins it from another thread's point
/// of view, ends it when the GUI shows it.
class Probe
{
public:
    explicit Probe(Station &station) : m_station(station), m_cell(station.cell(probeSignal))
    {
        Widgets::ModelAlarms &model = station.model();
        const auto look = [this] { this->look(); };
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &m_context, look);
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, &m_context, look);
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &m_context, look);
        QObject::connect(&model, &QAbstractItemModel::modelReset, &m_context, look);
        QObject::connect(&m_timer, &QTimer::timeout, &m_context, [this] { flip(); });
        m_timer.start(97);
    }
    Times times;
    int late() const { return m_isWaiting ? 1 : 0; }

private:
    void flip()
    {
        if (m_isWaiting)
            return;
        m_isRaised = !m_isRaised;
        m_isWaiting = true;
        m_begun = Clock::now();
        m_cell->Publish(m_isRaised ? 1.0 : 0.0);
    }
    void look()
    {
        if (!m_isWaiting || (m_station.model().rowOf(probeAlarm) >= 0) != m_isRaised)
            return;
        times.add(Clock::now() - m_begun);
        m_isWaiting = false;
    }
    Station &m_station;
    std::shared_ptr<Nodes::ValueCell> m_cell;
    QObject m_context;
    QTimer m_timer;
    bool m_isRaised = false;
    bool m_isWaiting = false;
    Clock::time_point m_begun;
};

/// Clicks a button whose action writes a value, from a thread as the display's connection would.
class Clicker
{
public:
    explicit Clicker(Station &station)
    {
        auto *action = dynamic_cast<Nodes::BasicAction *>(
            station.core.GetNodesCollection()->FindNode(clickAction));
        QObject::connect(&m_button, &QPushButton::clicked, &m_button,
                         [&station, action] { (void)station.manager->PushAction(action); });
        m_button.show();
        m_thread = std::thread([this, cell = station.cell(clickedSignal)] { run(*cell); });
    }
    ~Clicker() { end(); }
    void end()
    {
        m_isEnding = true;
        if (m_thread.joinable())
            m_thread.join();
    }
    Times times;

private:
    void run(Nodes::ValueCell &cell)
    {
        while (!m_isEnding) {
            cell.Publish(0.0);
            const auto begun = Clock::now();
            for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
                const QPointF place(5, 5);
                QCoreApplication::postEvent(
                    &m_button, new QMouseEvent(type, place, Qt::LeftButton,
                                               type == QEvent::MouseButtonPress ? Qt::LeftButton
                                                                                : Qt::NoButton,
                                               Qt::NoModifier));
            }
            while (!m_isEnding && cell.Value().ToDouble() != 1.0)
                std::this_thread::sleep_for(std::chrono::microseconds(200));
            if (!m_isEnding)
                times.add(Clock::now() - begun);
            std::this_thread::sleep_for(std::chrono::milliseconds(211));
        }
    }
    QPushButton m_button;
    std::atomic<bool> m_isEnding{false};
    std::thread m_thread;
};

bool storm(Station &station, int rate, int seconds)
{
    Heart heart;
    Probe probe(station);
    Clicker clicker(station);
    heart.begin();
    const auto begun = Clock::now();
    const auto workBefore = cpuTime();
    {
        const Storm storm(station, rate, seconds);
        while (!storm.isOver())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        std::printf("%d alarms in %.1f s, of work of the GUI %.1f s\n", storm.published(),
                    milliseconds(Clock::now() - begun) / 1e3,
                    milliseconds(cpuTime() - workBefore) / 1e3);
    }
    clicker.end();
    std::printf("%-28s %.1f ms, of work %.1f ms\n", "longest stall of the GUI",
                milliseconds(heart.longest), milliseconds(heart.longestWork));
    probe.times.print("alarm to its row");
    clicker.times.print("click to its write");
    const auto ended = Clock::now();
    const bool isWhole = await([&] { return probe.late() == 0 && station.differences() == 0; });
    std::printf("%-28s %d of %d rows, after %.0f ms\n", "differing from the model",
                station.differences(), station.model().rowCount(),
                milliseconds(Clock::now() - ended));
    return isWhole;
}

/// All alarms at once.
bool raiseAll(Station &station)
{
    Heart heart;
    heart.begin();
    const auto begun = Clock::now();
    for (const auto &cell : station.cells)
        cell->Publish(1.0);
    const bool isWhole = await([&] {
        return station.model().rowCount() == station.alarmCount && station.window().isVisible();
    });
    std::printf("%d of %d alarms at once shown after %.0f ms, longest stall %.1f ms, of work %.1f "
                "ms\n",
                station.model().rowCount(), station.alarmCount, milliseconds(Clock::now() - begun),
                milliseconds(heart.longest), milliseconds(heart.longestWork));
    return isWhole;
}

bool acknowledgeAll(Station &station)
{
    Widgets::AlarmDialog &dialog = station.window().dialog();
    QScrollBar *bar = dialog.table().verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    await([&] { return dialog.table().seenRevision() == station.model().revision(); });
    const int place = bar->value();
    const auto waiting = dialog.manager().waiting(station.model().revision()).size();
    Heart heart;
    heart.begin();
    const auto begun = Clock::now();
    const auto workBefore = cpuTime();
    for (QPushButton *button : dialog.findChildren<QPushButton *>()) {
        if (button->text() == QStringLiteral("Квитировать все"))
            button->click();
    }
    const auto clicked = Clock::now();
    const auto work = cpuTime() - workBefore;
    const auto isDone = [&] {
        return dialog.manager().waiting(station.model().revision()).empty() &&
               station.differences() == 0;
    };
    const bool isWhole = await(isDone);
    std::printf("acknowledging %zu alarms: the click took %.1f ms, of work %.1f ms, all was told "
                "back after "
                "%.1f ms, longest stall %.1f ms, scrolled by %d\n",
                waiting, milliseconds(clicked - begun), milliseconds(work),
                milliseconds(Clock::now() - begun), milliseconds(heart.longest),
                bar->value() - place);
    return isWhole;
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "station.*=false;qt.qpa.*=false");
    const QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QStandardPaths::setTestModeEnabled(true);
    QCommandLineParser options;
    options.addOptions({{"seconds", "How long; 0: only the acknowledgement.", "N", "5"},
                        {"rate", "Alarms a second.", "N", "10000"},
                        {"alarms", "Alarms of the project.", "N", "10000"}});
    options.addHelpOption();
    options.process(app);
    const auto number = [&options](const char *name) { return options.value(name).toInt(); };
    bool isWhole = true;
    if (number("seconds") > 0) {
        Station station(number("alarms"), true);
        isWhole = raiseAll(station) && storm(station, number("rate"), number("seconds"));
    }
    Station station(number("alarms"), false);
    return raiseAll(station) && acknowledgeAll(station) && isWhole ? 0 : 1;
}
