#pragma once

#include "e2e/DesktopRig.h"
#include "e2e/ProjectFacts.h"
#include "support/PlantClient.h"

#include <QDir>
#include <QJsonObject>
#include <QVector>

namespace EndToEnd {

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

/// The window of that name in what a station's health file says.
ShownWindow windowIn(const QJsonObject &status, const QString &name);

/// X server, plant and station as separate programs, and what an operator can do to them.
class StationRig : public DesktopRig
{
public:
    StationRig();

    /// Begins a test's programs in its initTestCase: skips the test where a tool is missing, fails
    /// it when one does not come up.
    void begin(const QString &windowManager = QStringLiteral("openbox"));

    /// Each is false when the program did not come up.
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
    QString dataDirectory() const { return path("data"); }

    /// The station's health file as it is now; empty before there is one.
    QJsonObject status() const;
    ShownWindow window(const QString &name) const;
    QVector<ShownElement> shown() const;

    /// How many windows of the station are on the display, menus that have popped up included.
    int windowCount() const;
    /// A button in the lowest row of the alarm window, `x` from its left or, negative, right edge.
    /// Nothing without the window.
    void clickInAlarms(int x) const;
    /// Closes the alarm window, again when an alarm brings it up meanwhile; false if it stays.
    [[nodiscard]] bool closeAlarms() const;
    /// Centres of the buttons that stand in a row within that part of the screen, from the left;
    /// none while they are not as many. Disabled and checked ones are none.
    QVector<QPoint> buttonsIn(const QRect &part, int count) const;

private:
    ProjectFacts m_facts;
    QString m_port = QStringLiteral("0");
    std::unique_ptr<ChildProcess> m_plant = std::make_unique<ChildProcess>();
    std::unique_ptr<ChildProcess> m_station = std::make_unique<ChildProcess>();
};

} // namespace EndToEnd
