#include "widgets/windows/desktop/Screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace Widgets {

namespace {

QSize assumedSize; // empty: the real displays count

} // namespace

int ScreenNumber(const QWidget *widget)
{
    if (!widget)
        return 0;
    QRect frame = widget->frameGeometry();
    if (!widget->isWindow())
        frame.moveTopLeft(widget->mapToGlobal(QPoint(0, 0)));
    if (!assumedSize.isEmpty())
        return qMax(0, frame.center().x() / assumedSize.width());
    const QList<QScreen *> screens = QGuiApplication::screens();
    int number = 0;
    int largest = 0;
    for (int i = 0; i < screens.size(); ++i) {
        const QRect shown = screens[i]->geometry() & frame;
        const int area = shown.width() * shown.height();
        if (area > largest) {
            largest = area;
            number = i;
        }
    }
    return number;
}

QScreen *ScreenAt(int number)
{
    return QGuiApplication::screens().value(number, nullptr);
}

QScreen *ScreenOf(const QRect &rectangle)
{
    QScreen *screen = QGuiApplication::screenAt(rectangle.topLeft());
    return screen ? screen : QGuiApplication::primaryScreen();
}

QRect DisplayGeometry(int number)
{
    if (!assumedSize.isEmpty() && number >= 0)
        return {QPoint(number * assumedSize.width(), 0), assumedSize};
    const QScreen *screen = ScreenAt(number);
    return screen ? screen->geometry() : QRect();
}

QSize DesktopSize()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    QRect all;
    for (const QScreen *screen : screens)
        all |= screen->geometry();
    return assumedSize.expandedTo(all.size());
}

void AssumeDisplays(const QSize &size)
{
    assumedSize = size;
}

} // namespace Widgets
