#include "e2e/ConfiguratorRig.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <utility>

namespace EndToEnd {

namespace {

QRect placeOfControl(const QJsonObject &control)
{
    return {control["x"].toInt(), control["y"].toInt(), control["width"].toInt(),
            control["height"].toInt()};
}

QStringList at(const QPoint &place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

} // namespace

void ConfiguratorRig::begin(const QString &windowManager)
{
    const QString missing = missingTool();
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing + " is not installed; tools/install-dependencies installs it"));
    QVERIFY(startDisplay(windowManager));
}

bool ConfiguratorRig::start(const QString &project, const QStringList &options)
{
    QFile::remove(path("map.json"));
    m_program = std::make_unique<ChildProcess>();
    m_program->setProcessEnvironment(environment());
    QStringList arguments{"--platform",
                          "xcb",
                          "--ui-map",
                          path("map.json"),
                          "--station-option=--platform=xcb",
                          "--station-option=--unattended",
                          "--station-option=--status-texts",
                          "--station-option=--status-file=" + path("status.json")};
    if (!project.isEmpty())
        arguments << project;
    return m_program->begin(STATION_BINARY_DIR "/bin/configurator", arguments + options) &&
           QTest::qWaitFor([this] { return find("configurator").isValid(); }, patience);
}

bool ConfiguratorRig::startNew(const QString &name)
{
    if (!start({}) || !press("startNew") || !press("place", "QLineEdit"))
        return false;
    key("ctrl+a");
    write(path("projects"));
    if (!press("name", "QLineEdit"))
        return false;
    key("ctrl+a");
    write(name);
    key("Return");
    return QTest::qWaitFor([&] { return QFile::exists(project(name)); }, patience);
}

QString ConfiguratorRig::project(const QString &name) const
{
    return path("projects/" + name + "/project.xml");
}

void ConfiguratorRig::kill()
{
    m_program->kill();
    m_program->waitForFinished(patience);
}

QJsonObject ConfiguratorRig::map() const
{
    return QJsonDocument::fromJson(contentOf(path("map.json"))).object();
}

QJsonObject ConfiguratorRig::control(const QString &name, const QString &kind) const
{
    const QJsonArray controls = map()["controls"].toArray();
    for (const char *key : {"name", "text"}) {
        for (const QJsonValue &value : controls) {
            if (value[QLatin1String(key)].toString() == name &&
                (kind.isEmpty() || value["kind"].toString() == kind))
                return value.toObject();
        }
    }
    return {};
}

QRect ConfiguratorRig::find(const QString &name, const QString &kind) const
{
    return placeOfControl(control(name, kind));
}

QRect ConfiguratorRig::await(const QString &name, const QString &kind) const
{
    QRect place;
    const auto isReady = [&] {
        const QJsonObject found = control(name, kind);
        const QRect before = std::exchange(place, placeOfControl(found));
        return found["enabled"].toBool() && place.isValid() && place == before;
    };
    while (QTest::qWaitFor(isReady, patience)) {
        QTest::qWait(300); // more than the map's own period: it has been looked at anew
        if (isReady())
            return place;
    }
    return {};
}

bool ConfiguratorRig::press(const QString &name, const QString &kind) const
{
    const QRect place = await(name, kind);
    if (place.isValid())
        click(place.center());
    return place.isValid();
}

bool ConfiguratorRig::pressTwice(const QString &name, const QString &kind) const
{
    const QRect place = await(name, kind);
    if (place.isValid())
        xdotool(at(place.center()) + QStringList{"click", "--repeat", "2", "--delay", "80", "1"});
    return place.isValid();
}

bool ConfiguratorRig::dragTo(const QRect &from, const QRect &to) const
{
    if (!from.isValid() || !to.isValid())
        return false;
    const QPoint begin = from.center();
    const QPoint end = to.center();
    QStringList way = at(begin) + QStringList{"mousedown", "1"};
    constexpr int steps = 8;
    for (int i = 1; i <= steps; ++i)
        way += at(begin + (end - begin) * i / steps) + QStringList{"sleep", "0.05"};
    xdotool(way + QStringList{"sleep", "0.1", "mouseup", "1"});
    return true;
}

QString ConfiguratorRig::textOf(const QString &name) const
{
    return control(name, {})["text"].toString();
}

QStringList ConfiguratorRig::titles() const
{
    QStringList all;
    const QJsonArray found = map()["titles"].toArray();
    for (const QJsonValue &title : found)
        all << title.toString();
    return all;
}

void ConfiguratorRig::key(const QString &combination) const
{
    xdotool({"key", combination});
}

bool ConfiguratorRig::activate(const QString &titlePart) const
{
    const auto isActive = [&] { return activeTitle().contains(titlePart); };
    (void)onDisplay("xdotool", {"search", "--onlyvisible", "--name", titlePart, "windowactivate"});
    return QTest::qWaitFor(isActive, patience);
}

void ConfiguratorRig::write(const QString &text) const
{
    xdotool({"type", "--delay", "60", text});
}

QJsonObject ConfiguratorRig::stationStatus() const
{
    return QJsonDocument::fromJson(contentOf(path("status.json"))).object();
}

} // namespace EndToEnd
