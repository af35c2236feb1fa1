#include "e2e/StationRig.h"

#include <QColor>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTest>

#include <utility>

namespace EndToEnd {

namespace {

const QString alarmTitle = QStringLiteral("Тревоги");
const QString projectDirectory = QStringLiteral(STATION_SOURCE_DIR "/projects/boiler");

const QColor buttonFace(0xf4, 0xf6, 0xf7);
constexpr int touchSize = 40;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QVector<ShownElement> elementsOf(const QJsonObject &window)
{
    QVector<ShownElement> elements;
    for (const QJsonValue &value : window["texts"].toArray())
        elements.append({value["id"].toInt(), value["signal"].toString(), value["text"].toString(),
                         value["quality"].toString()});
    return elements;
}

QStringList moveTo(const QPoint &place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

} // namespace

QSet<int> ShownWindow::ids() const
{
    QSet<int> found;
    for (const ShownElement &element : elements)
        found.insert(element.id);
    return found;
}

QString ShownWindow::textOf(const QString &signalName) const
{
    for (const ShownElement &element : elements) {
        if (element.signal.endsWith(QLatin1Char('/') + signalName))
            return element.text;
    }
    return {};
}

bool ShownWindow::reads(const QString &signalName, const QString &text) const
{
    return std::any_of(elements.begin(), elements.end(), [&](const ShownElement &element) {
        return element.signal.endsWith(QLatin1Char('/') + signalName) &&
               element.text.contains(text);
    });
}

StationRig::StationRig()
{
    if (!m_facts.read(projectDirectory + "/project.xml"))
        qFatal("cannot read the project");
}

void StationRig::begin(const QString &windowManager)
{
    const QString missing = missingTool();
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing + " is not installed; tools/install-dependencies installs it"));
    QVERIFY(startDisplay(windowManager));
    QVERIFY(startPlant());
    QVERIFY(startStation());
}

QString StationRig::missingTool()
{
    for (const char *tool :
         {"Xvfb", "xdotool", "xprop", "import", "openbox", "xfwm4", "dbus-daemon"}) {
        if (QStandardPaths::findExecutable(tool).isEmpty())
            return tool;
    }
    return {};
}

bool StationRig::startDisplay(const QString &windowManager)
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
bool StationRig::startWindowManager(const QString &program)
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

bool StationRig::startPlant()
{
    const QString portFile = m_directory.filePath("port");
    QFile::remove(portFile);
    m_plant = std::make_unique<ChildProcess>();
    if (!m_plant->begin(STATION_BINARY_DIR "/bin/plant",
                        {"--warm", "--port", m_port, "--port-file", portFile}))
        return false;
    if (!QTest::qWaitFor([&] { return !contentOf(portFile).isEmpty(); }, patience))
        return false;
    m_port = QString::fromLatin1(contentOf(portFile)).trimmed();
    return true;
}

QProcessEnvironment StationRig::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DISPLAY", m_display);
    environment.insert("XDG_CONFIG_HOME", m_directory.filePath("config"));
    environment.insert("DBUS_SESSION_BUS_ADDRESS", m_bus);
    environment.remove("QT_QPA_PLATFORM");
    environment.remove("G_SLICE"); // set for sanitizers; openbox ends at once without its pools
    return environment;
}

bool StationRig::startStation()
{
    m_station->setProcessEnvironment(environment());
    return m_station->begin(STATION_BINARY_DIR "/bin/station",
                            {projectDirectory, "--platform", "xcb", "--unattended", "--define",
                             "plant.port=" + m_port, "--data", dataDirectory(), "--status-file",
                             m_directory.filePath("status.json"), "--status-texts"});
}

QJsonObject StationRig::status() const
{
    return QJsonDocument::fromJson(contentOf(m_directory.filePath("status.json"))).object();
}

ShownWindow StationRig::window(const QString &name) const
{
    for (const QJsonValue &value : status()["windows"].toArray()) {
        const QJsonObject window = value.toObject();
        if (window["name"].toString() != name)
            continue;
        const QRect place(window["x"].toInt(), window["y"].toInt(), window["width"].toInt(),
                          window["height"].toInt());
        return {true, place, elementsOf(window)};
    }
    return {};
}

QVector<ShownElement> StationRig::shown() const
{
    QVector<ShownElement> elements;
    for (const QJsonValue &value : status()["windows"].toArray())
        elements += elementsOf(value.toObject());
    return elements;
}

bool StationRig::onDisplay(const QString &program, const QStringList &arguments,
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

void StationRig::xdotool(const QStringList &arguments) const
{
    QVERIFY2(onDisplay("xdotool", arguments), qPrintable("xdotool " + arguments.join(' ')));
}

void StationRig::click(const QPoint &place) const
{
    xdotool(moveTo(place) + QStringList{"click", "1"});
}

void StationRig::type(const QString &text, const QString &key) const
{
    if (!text.isEmpty())
        xdotool({"type", "--delay", "20", text});
    xdotool({"key", key});
}

bool StationRig::hasTitle(const QString &title) const
{
    return onDisplay("xdotool", {"search", "--onlyvisible", "--name", "^" + title + "$"});
}

QRect StationRig::placeOf(const QString &title) const
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
QRect StationRig::settledPlaceOf(const QString &title) const
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

int StationRig::windowCount() const
{
    QByteArray output;
    (void)onDisplay("xdotool", {"search", "--onlyvisible", "--class", "station"}, &output);
    return output.count('\n');
}

void StationRig::clickInAlarms(int x) const
{
    const QRect place = hasTitle(alarmTitle) ? settledPlaceOf(alarmTitle) : QRect();
    if (place.isValid())
        click({(x < 0 ? place.right() : place.left()) + x, place.bottom() - 32});
}

bool StationRig::closeAlarms() const
{
    const auto isClosed = [this] { return !hasTitle(alarmTitle); };
    for (int tries = 0; tries < 10 && !isClosed(); ++tries) {
        clickInAlarms(-60);
        (void)QTest::qWaitFor(isClosed, 2000);
    }
    return isClosed();
}

QString StationRig::activeTitle() const
{
    QByteArray output;
    (void)onDisplay("xdotool", {"getactivewindow", "getwindowname"}, &output);
    return QString::fromUtf8(output).trimmed();
}

void StationRig::drag(const QPoint &from, const QPoint &to) const
{
    xdotool(moveTo(from) + QStringList{"mousedown", "1"} + moveTo((from + to) / 2) + moveTo(to) +
            QStringList{"mouseup", "1"});
}

QImage StationRig::grab(const QRect &part, const QString &name) const
{
    const QString kept = qEnvironmentVariable("STATION_E2E_PICTURES");
    const QString file = QDir(kept.isEmpty() ? m_directory.path() : kept).filePath(name + ".png");
    return onDisplay("import", {"-silent", "-window", "root", file}) ? QImage(file).copy(part)
                                                                     : QImage();
}

// The first row of pixels that crosses them all: text stands lower.
QVector<QPoint> StationRig::buttonsIn(const QRect &part, int count) const
{
    constexpr int least = 32; // pixels wide
    const QImage image = grab(part, "buttons");
    for (int y = 0; y < image.height(); ++y) {
        QVector<QPoint> found;
        int begin = -1;
        for (int x = 0; x <= image.width(); ++x) {
            const bool isFace = x < image.width() && image.pixelColor(x, y) == buttonFace;
            if (isFace && begin < 0)
                begin = x;
            if (isFace || begin < 0)
                continue;
            if (x - begin >= least)
                found.append(part.topLeft() + QPoint((begin + x) / 2, y + touchSize / 2 - 4));
            begin = -1;
        }
        if (found.size() == count)
            return found;
    }
    return {};
}

QString StationRig::printed(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool isDone = process.waitForFinished(30000) && process.exitCode() == 0;
    return isDone ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

} // namespace EndToEnd
