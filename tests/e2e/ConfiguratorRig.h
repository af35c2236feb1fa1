#pragma once

#include "e2e/DesktopRig.h"

#include <QJsonObject>
#include <QStringList>

namespace EndToEnd {

/// The configurator as a separate program on a display of its own, and what a project engineer can
/// do to it with mouse and keyboard.
class ConfiguratorRig : public DesktopRig
{
public:
    /// Begins a test's display in its initTestCase: skips the test where a tool is missing.
    void begin(const QString &windowManager = QStringLiteral("openbox"));

    /// `project` may be empty; false when no main window came up.
    [[nodiscard]] bool start(const QString &project, const QStringList &options = {});
    /// Starts it without a project and makes one; false when no file came of it.
    [[nodiscard]] bool startNew(const QString &name);
    /// File of the project made under that name.
    QString project(const QString &name) const;
    /// Without asking it, as a loss of power.
    void kill();
    /// Asks it to end; true when it ended by itself with code 0.
    bool stop() { return m_program->end(); }
    qint64 process() const { return m_program->processId(); }
    bool isRunning() const { return m_program->state() == QProcess::Running; }

    /// Where a visible control is: by its object name or else what it says; "kind" narrows it to a
    /// class of widgets or "item", "tab", "action", "element". Empty without one.
    QRect find(const QString &name, const QString &kind = {}) const;
    /// Waits until it is there and enabled and has come to stand still; empty when it never does.
    QRect await(const QString &name, const QString &kind = {}) const;
    /// Waits for it and presses it; false when it never is there.
    [[nodiscard]] bool press(const QString &name, const QString &kind = {}) const;
    [[nodiscard]] bool pressTwice(const QString &name, const QString &kind = {}) const;
    /// From one control to another, by their middles, with `hold` the button is down a while first.
    [[nodiscard]] bool dragTo(const QRect &from, const QRect &to) const;
    /// What the control of that object name says.
    QString textOf(const QString &name) const;
    /// Titles of the visible windows, dialogs included.
    QStringList titles() const;
    void key(const QString &combination) const;
    /// Gives the keyboard to the window with that in its title, as a press on the task bar does.
    [[nodiscard]] bool activate(const QString &titlePart) const;
    /// Types letters of any alphabet, slowly enough for every one to arrive.
    void write(const QString &text) const;

    /// Health file of the station that "Запуск" has started.
    QJsonObject stationStatus() const;

private:
    QJsonObject map() const;
    QJsonObject control(const QString &name, const QString &kind) const;

    std::unique_ptr<ChildProcess> m_program = std::make_unique<ChildProcess>();
};

} // namespace EndToEnd
