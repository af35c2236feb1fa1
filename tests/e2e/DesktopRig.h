#pragma once

#include "e2e/ChildProcess.h"

#include <QImage>
#include <QPoint>
#include <QProcessEnvironment>
#include <QRect>
#include <QTemporaryDir>

#include <memory>

namespace EndToEnd {

/// How long what takes a moment may take on a machine that has other things to do, ms.
constexpr int patience = 30000;

/// An X server of its own with the window manager of a desktop, and what a user can do to it.
class DesktopRig
{
public:
    /// False when a program did not come up. "xfwm4" is a window manager that stacks differently.
    [[nodiscard]] bool startDisplay(const QString &windowManager = QStringLiteral("openbox"));

    void click(const QPoint &point) const;
    /// Types on the keyboard: a text, then the named key.
    void type(const QString &text, const QString &key) const;
    /// Whether a window of that title, dialogs included, is on the display.
    bool hasTitle(const QString &title) const;
    /// Where that window is; empty without one.
    QRect placeOf(const QString &title) const;
    /// Where it has come to stand still.
    QRect settledPlaceOf(const QString &title) const;
    /// Title of the window that has the keyboard.
    QString activeTitle() const;
    void drag(const QPoint &from, const QPoint &to) const;
    /// Part of the screen; kept as a file when `STATION_E2E_PICTURES` names a directory.
    QImage grab(const QRect &part, const QString &name) const;
    /// What a program of ours prints, to its end; "" when it fails.
    static QString printed(const QString &program, const QStringList &arguments);

    /// A file in the directory of this test; removed with it.
    QString path(const QString &name) const { return m_directory.filePath(name); }
    /// Names the first missing tool; "" when all are there.
    static QString missingTool();

protected:
    QProcessEnvironment environment() const;
    /// Runs a program on the display to its end; `output` gets what it printed.
    bool onDisplay(const QString &program, const QStringList &arguments,
                   QByteArray *output = nullptr) const;
    /// Fails the test when the tool does.
    void xdotool(const QStringList &arguments) const;
    /// "" when it cannot be read.
    static QByteArray contentOf(const QString &path);

private:
    [[nodiscard]] bool startWindowManager(const QString &program);

    QTemporaryDir m_directory;
    QString m_display;
    std::unique_ptr<ChildProcess> m_server = std::make_unique<ChildProcess>();
    QString m_bus;
    std::unique_ptr<ChildProcess> m_busServer = std::make_unique<ChildProcess>();
    std::unique_ptr<ChildProcess> m_windowManager = std::make_unique<ChildProcess>();
};

} // namespace EndToEnd
