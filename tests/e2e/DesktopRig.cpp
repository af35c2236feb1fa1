#include "e2e/DesktopRig.h"

#include <QStandardPaths>
#include <QTest>

#include <utility>

namespace EndToEnd {

namespace {

QStringList moveTo(const QPoint &place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

} // namespace

QByteArray DesktopRig::contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString DesktopRig::missingTool()
{
    for (const char *tool :
         {"Xvfb", "xdotool", "xprop", "import", "openbox", "xfwm4", "dbus-daemon"}) {
        if (QStandardPaths::findExecutable(tool).isEmpty())
            return tool;
    }
    return {};
}

bool DesktopRig::startDisplay(const QString &windowManager)
{
    if (!m_server->begin("Xvfb", {"-displayfd", "1", "-screen", "0", "1920x1080x24", "-noreset",
                                  "-nolisten", "tcp"}))
        return false;
    while (!m_server->canReadLine() && m_server->waitForReadyRead(patience)) {
    }
    m_display = ":" + QString::fromLatin1(m_server->readLine()).trimmed();
    return m_display.size() > 1 && startWindowManager(windowManager);
}

// Some keep their settings behind a message bus. Neither that nor what it starts holds the output
// of the test open.
bool DesktopRig::startWindowManager(const QString &program)
{
    m_busServer->setProcessChannelMode(QProcess::SeparateChannels);
    if (!m_busServer->begin("dbus-daemon", {"--session", "--nofork", "--print-address"}))
        return false;
    while (!m_busServer->canReadLine() && m_busServer->waitForReadyRead(patience)) {
    }
    m_bus = QString::fromLatin1(m_busServer->readLine()).trimmed();
    m_windowManager->setProcessEnvironment(environment());
    m_windowManager->setProcessChannelMode(QProcess::SeparateChannels);
    if (!m_windowManager->begin(program, {}))
        return false;
    const auto isThere = [this] {
        QByteArray answer;
        return onDisplay("xprop", {"-root", "_NET_SUPPORTING_WM_CHECK"}, &answer) &&
               answer.contains('#');
    };
    return QTest::qWaitFor(isThere, patience);
}

QProcessEnvironment DesktopRig::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_display);
    environment.insert("XDG_CONFIG_HOME", m_directory.filePath("config"));
    environment.insert("XDG_DATA_HOME", m_directory.filePath("share"));
    environment.insert("XDG_STATE_HOME", m_directory.filePath("state"));
    environment.insert("DBUS_SESSION_BUS_ADDRESS", m_bus);
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("G_SLICE"); // set for sanitizers; openbox ends at once without its pools
    return environment;
}

bool DesktopRig::onDisplay(const QString &program, const QStringList &arguments,
                           QByteArray *output) const
{
    ChildProcess tool;
    tool.setProcessEnvironment(environment());
    const bool isDone =
        tool.begin(program, arguments) && tool.waitForFinished(patience) && tool.end();
    if (output)
        *output = tool.readAllStandardOutput();
    return isDone;
}

void DesktopRig::xdotool(const QStringList &arguments) const
{
    QVERIFY2(onDisplay("xdotool", arguments), qPrintable("xdotool " + arguments.join(' ')));
}

void DesktopRig::click(const QPoint &place) const
{
    xdotool(moveTo(place) + QStringList{"click", "1"});
}

void DesktopRig::type(const QString &text, const QString &key) const
{
    if (!text.isEmpty())
        xdotool({"type", "--delay", "20", text});
    xdotool({"key", key});
}

bool DesktopRig::hasTitle(const QString &title) const
{
    return onDisplay("xdotool", {"search", "--onlyvisible", "--name", "^" + title + "$"});
}

QRect DesktopRig::placeOf(const QString &title) const
{
    QByteArray output;
    if (!onDisplay("xdotool",
                   {"search", "--onlyvisible", "--name", "^" + title + "$", "getwindowgeometry",
                    "--shell"},
                   &output))
        return {};
    QMap<QByteArray, int> numbers; // lines of NAME=number
    for (const QByteArray &line : output.split('\n'))
        numbers[line.left(line.indexOf('='))] = line.mid(line.indexOf('=') + 1).toInt();
    return {numbers["X"], numbers["Y"], numbers["WIDTH"], numbers["HEIGHT"]};
}

// A window may grow or be moved onto the screen just after it has come up.
QRect DesktopRig::settledPlaceOf(const QString &title) const
{
    QRect place;
    const auto stands = [&] {
        const QRect before = std::exchange(place, placeOf(title));
        return place.isValid() && place == before;
    };
    while (QTest::qWaitFor(stands, patience)) {
        QTest::qWait(300);
        if (stands())
            return place;
    }
    return {};
}

QString DesktopRig::activeTitle() const
{
    QByteArray output;
    (void)onDisplay("xdotool", {"getactivewindow", "getwindowname"}, &output);
    return QString::fromUtf8(output).trimmed();
}

void DesktopRig::drag(const QPoint &from, const QPoint &to) const
{
    xdotool(moveTo(from) + QStringList{"mousedown", "1"} + moveTo((from + to) / 2) + moveTo(to) +
            QStringList{"mouseup", "1"});
}

QImage DesktopRig::grab(const QRect &part, const QString &name) const
{
    const QString kept = qEnvironmentVariable("STATION_E2E_PICTURES");
    const QString file = QDir(kept.isEmpty() ? m_directory.path() : kept).filePath(name + ".png");
    return onDisplay("import", {"-silent", "-window", "root", file}) ? QImage(file).copy(part)
                                                                     : QImage();
}

QString DesktopRig::printed(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool isDone = process.waitForFinished(30000) && process.exitCode() == 0;
    return isDone ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

} // namespace EndToEnd
