#include "e2e/StationRig.h"

#include <QColor>
#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

namespace EndToEnd {

namespace {

const QString alarmTitle = QStringLiteral("Тревоги");
const QString projectDirectory = QStringLiteral(STATION_SOURCE_DIR "/projects/boiler");

const QColor buttonFace(0xf4, 0xf6, 0xf7);
constexpr int touchSize = 40;

QVector<ShownElement> elementsOf(const QJsonObject &window)
{
    QVector<ShownElement> elements;
    for (const QJsonValue &value : window["texts"].toArray())
        elements.append({value["id"].toInt(), value["signal"].toString(), value["text"].toString(),
                         value["quality"].toString()});
    return elements;
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

ShownWindow windowIn(const QJsonObject &status, const QString &name)
{
    for (const QJsonValue &value : status["windows"].toArray()) {
        const QJsonObject window = value.toObject();
        if (window["name"].toString() != name)
            continue;
        const QRect place(window["x"].toInt(), window["y"].toInt(), window["width"].toInt(),
                          window["height"].toInt());
        return {true, place, elementsOf(window)};
    }
    return {};
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

bool StationRig::startPlant()
{
    const QString portFile = path("port");
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

bool StationRig::startStation()
{
    m_station->setProcessEnvironment(environment());
    return m_station->begin(STATION_BINARY_DIR "/bin/station",
                            {projectDirectory, "--platform", "xcb", "--unattended", "--define",
                             "plant.port=" + m_port, "--data", dataDirectory(), "--status-file",
                             path("status.json"), "--status-texts"});
}

QJsonObject StationRig::status() const
{
    return QJsonDocument::fromJson(contentOf(path("status.json"))).object();
}

ShownWindow StationRig::window(const QString &name) const
{
    return windowIn(status(), name);
}

QVector<ShownElement> StationRig::shown() const
{
    QVector<ShownElement> elements;
    for (const QJsonValue &value : status()["windows"].toArray())
        elements += elementsOf(value.toObject());
    return elements;
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

} // namespace EndToEnd
