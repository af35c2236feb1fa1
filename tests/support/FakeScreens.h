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
            siblings().append(new Screen(i));
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
        explicit Screen(int number) : m_number(number) {}
        QList<QPlatformScreen *> virtualSiblings() const override { return siblings(); }
        QRect geometry() const override { return {topLeft(m_number), Size}; }
        int depth() const override { return 32; }
        QImage::Format format() const override { return QImage::Format_ARGB32_Premultiplied; }
        QString name() const override { return QStringLiteral("FAKE-%1").arg(m_number + 1); }
        QDpi logicalDpi() const override { return {96, 96}; }

    private:
        int m_number;
    };
};
