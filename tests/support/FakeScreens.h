#pragma once

#include <QGuiApplication>
#include <QScreen>

#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

/// Puts several displays side by side in place of the platform plug-in's only one. Once a process,
/// before the first window; the displays stay until they are removed or the application ends.
class FakeScreens
{
public:
    static constexpr QSize Size{1920, 1080};

    static void install(int count)
    {
        QPlatformScreen *stock = QGuiApplication::primaryScreen()->handle();
        for (int i = 0; i < count; ++i)
            siblings().append(new Screen(topLeft(i), i));
        for (QPlatformScreen *screen : siblings())
            QWindowSystemInterface::handleScreenAdded(screen, screen == siblings().first());
        QWindowSystemInterface::handleScreenRemoved(stock);
    }

    /// As if its cable was pulled.
    static void remove(int number)
    {
        QPlatformScreen *gone = QGuiApplication::screens().at(number)->handle();
        siblings().removeOne(gone);
        QWindowSystemInterface::handleScreenRemoved(gone);
    }

    /// As if one more was plugged in, to the right of those that there would be.
    static void add()
    {
        const int number = siblings().size();
        siblings().append(new Screen(topLeft(number), number));
        QWindowSystemInterface::handleScreenAdded(siblings().last(), false);
    }

    /// As if its resolution was changed.
    static void resize(int number, const QSize &size)
    {
        QScreen *screen = QGuiApplication::screens().at(number);
        auto *platform = static_cast<Screen *>(screen->handle());
        platform->area.setSize(size);
        QWindowSystemInterface::handleScreenGeometryChange(screen, platform->area, platform->area);
        QWindowSystemInterface::flushWindowSystemEvents();
    }

    static QPoint topLeft(int number) { return {number * Size.width(), 0}; }

private:
    static QList<QPlatformScreen *> &siblings()
    {
        static QList<QPlatformScreen *> all;
        return all;
    }

    class Screen : public QPlatformScreen
    {
    public:
        Screen(const QPoint &topLeft, int number) : area(topLeft, Size), m_number(number) {}
        QList<QPlatformScreen *> virtualSiblings() const override { return siblings(); }
        QRect geometry() const override { return area; }
        int depth() const override { return 32; }
        QImage::Format format() const override { return QImage::Format_ARGB32_Premultiplied; }
        QString name() const override { return QStringLiteral("FAKE-%1").arg(m_number + 1); }
        QDpi logicalDpi() const override { return {96, 96}; }

        QRect area;

    private:
        int m_number;
    };
};
