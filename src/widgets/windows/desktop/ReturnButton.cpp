#include "widgets/windows/desktop/ReturnButton.h"

#include <QGuiApplication>
#include <QScreen>

namespace Widgets {

namespace {

constexpr QSize touchSize(176, 48);
constexpr int margin = 8;

} // namespace

// The window manager has no say in it: it would minimise it with the rest, or cover it.
ReturnButton::ReturnButton() : QPushButton(QStringLiteral("▲ Станция"))
{
    setObjectName(QStringLiteral("returnButton"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::X11BypassWindowManagerHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    QFont large = font();
    large.setPixelSize(16);
    setFont(large);
    resize(touchSize);
    const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
    move(room.bottomRight() - rect().bottomRight() - QPoint(margin, margin));
}

} // namespace Widgets
