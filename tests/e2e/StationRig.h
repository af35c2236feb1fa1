#pragma once

#include "e2e/ChildProcess.h"
#include "e2e/ProjectFacts.h"
#include "support/PlantClient.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

namespace EndToEnd {

/// How long what takes a moment may take on a machine that has other things to do, ms.
constexpr int patience = 30000;

/// What the station says that one of its elements shows.
struct ShownElement
{
    int id = 0;
    QString signal;
    QString text;
    QString quality;
};

/// What the station says about one of its windows.
struct ShownWindow
{
    bool isOpen = false;
    QRect place; // on the screen
    QVector<ShownElement> elements;

    QSet<int> ids() const;
    /// What the element of that signal reads; "" without one.
    QString textOf(const QString &signalName) const;
    /// Whether one of the elements of that signal has that text in what it reads.
    bool reads(const QString &signalName, const QString &text) const;
};

/// X server, plant and station as separate programs, and what an operator can do to them.
class StationRig
{
public:
    StationRig();

    /// Begins a test's programs in its initTestCase: skips the test where a tool is missing, fails
    /// it when one does not come up.
    void begin(const QString &windowManager = QStringLiteral("openbox"));

    /// Each is false when the program did not come up.
    /// The display has the window manager of a desktop; "xfwm4" is one that stacks differently.
    [[nodiscard]] bool startDisplay(const QString &windowManager = QStringLiteral("openbox"));
    [[nodiscard]] bool startPlant();
    [[nodiscard]] bool startStation();
    /// True when the program ended with code 0.
    bool stopPlant() { return m_plant->end(); }
    bool stopStation() { return m_station->end(); }
    bool isStationRunning() const { return m_station->state() == QProcess::Running; }

    /// The test's own look at the plant, past the station. Each connects anew, so that restarts and
    /// faults of the line leave nothing behind.
    PlantClient plant() const { return PlantClient(m_port.toInt(), 1000); }
    const ProjectFacts &project() const { return m_facts; }
    QString dataDirectory() const { return m_directory.filePath("data"); }

    /// The station's health file as it is now; empty before there is one.
    QJsonObject status() const;
    ShownWindow window(const QString &name) const;
    QVector<ShownElement> shown() const;

    void click(const QPoint &point) const;
    /// Types on the keyboard: a text, then the named key.
    void type(const QString &text, const QString &key) const;
    /// Whether a window of that title, dialogs included, is on the display.
    bool hasTitle(const QString &title) const;
    /// Where that window is; empty without one.
    QRect placeOf(const QString &title) const;
    /// Where it has come to stand still.
    QRect settledPlaceOf(const QString &title) const;
    /// How many windows of the station are on the display, menus that have popped up included.
    int windowCount() const;
    /// A button in the lowest row of the alarm window, `x` from its left or, negative, right edge.
    /// Nothing without the window.
    void clickInAlarms(int x) const;
    /// Closes the alarm window, again when an alarm brings it up meanwhile; false if it stays.
    [[nodiscard]] bool closeAlarms() const;
    /// Title of the window that has the keyboard.
    QString activeTitle() const;
    void drag(const QPoint &from, const QPoint &to) const;
    /// Part of the screen; kept as a file when `STATION_E2E_PICTURES` names a directory.
    QImage grab(const QRect &part, const QString &name) const;
    /// Centres of the buttons that stand in a row within that part of the screen, from the left;
    /// none while they are not as many. Disabled and checked ones are none.
    QVector<QPoint> buttonsIn(const QRect &part, int count) const;
    /// What a program of the station prints, to its end; "" when it fails.
    static QString printed(const QString &program, const QStringList &arguments);

private:
    /// Names the first missing tool; "" when all are there.
    static QString missingTool();
    [[nodiscard]] bool startWindowManager(const QString &program);
    QProcessEnvironment environment() const;
    /// Runs a program on the display to its end; `output` gets what it printed.
    bool onDisplay(const QString &program, const QStringList &arguments,
                   QByteArray *output = nullptr) const;
    /// Fails the test when the tool does.
    void xdotool(const QStringList &arguments) const;

    QTemporaryDir m_directory;
    ProjectFacts m_facts;
    QString m_port = QStringLiteral("0");
    QString m_display;
    std::unique_ptr<ChildProcess> m_server = std::make_unique<ChildProcess>();
    QString m_bus;
    std::unique_ptr<ChildProcess> m_busServer = std::make_unique<ChildProcess>();
    std::unique_ptr<ChildProcess> m_windowManager = std::make_unique<ChildProcess>();
    std::unique_ptr<ChildProcess> m_plant = std::make_unique<ChildProcess>();
    std::unique_ptr<ChildProcess> m_station = std::make_unique<ChildProcess>();
};

} // namespace EndToEnd
