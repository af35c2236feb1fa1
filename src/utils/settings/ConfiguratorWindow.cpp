#include "utils/settings/ConfiguratorWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace Utils {

namespace {

QJsonObject toJson(const QRect &rect)
{
    return {{QStringLiteral("x"), rect.x()},
            {QStringLiteral("y"), rect.y()},
            {QStringLiteral("width"), rect.width()},
            {QStringLiteral("height"), rect.height()}};
}

/// Invalid unless all four are whole numbers and the size is positive.
QRect fromJson(const QJsonObject &object)
{
    const auto number = [&object](const char *key, int missing) {
        return object.value(QLatin1String(key)).toInt(missing);
    };
    constexpr int absent = -1'000'000;
    constexpr int limit = 100'000;
    const int x = number("x", absent);
    const int y = number("y", absent);
    const int width = number("width", 0);
    const int height = number("height", 0);
    const bool isSane = std::max({std::abs(x), std::abs(y), width, height}) <= limit;
    return isSane && width > 0 && height > 0 ? QRect(x, y, width, height) : QRect();
}

QRect ontoScreen(QRect rect)
{
    const QScreen *screen = QGuiApplication::screenAt(rect.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (!screen)
        return rect;
    const QRect room = screen->availableGeometry();
    rect.setSize(rect.size().boundedTo(room.size()));
    rect.moveLeft(std::clamp(rect.left(), room.left(), room.right() + 1 - rect.width()));
    rect.moveTop(std::clamp(rect.top(), room.top(), room.bottom() + 1 - rect.height()));
    return rect;
}

} // namespace

ConfiguratorWindow::ConfiguratorWindow(QWidget *window, QString name, QString fileName)
    : Configurator(std::move(name), std::move(fileName)), m_window(window)
{
}

Nodes::Result ConfiguratorWindow::load()
{
    QJsonObject settings;
    const Nodes::Result result = Configurator::load(settings);
    const QRect place = fromJson(settings.value(QStringLiteral("geometry")).toObject());
    if (place.isValid())
        m_window->setGeometry(ontoScreen(place));
    if (result)
        readSettings(settings);
    return result;
}

Nodes::Result ConfiguratorWindow::save() const
{
    // A window that has never been shown has no normal geometry.
    const QRect normal = m_window->normalGeometry();
    const QRect place = normal.isValid() ? normal : m_window->geometry();
    QJsonObject settings{{QStringLiteral("geometry"), toJson(place)}};
    writeSettings(settings);
    return Configurator::save(settings);
}

void ConfiguratorWindow::readSettings(const QJsonObject &) {}

void ConfiguratorWindow::writeSettings(QJsonObject &) const {}

} // namespace Utils
