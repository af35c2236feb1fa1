#include "widgets/windows/frames/FrameDisplays.h"

#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameTabs.h"
#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/visual/windows/BasicFrame.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace Widgets {

FrameDisplays::FrameDisplays(QObject *parent) : QObject(parent)
{
    for (QScreen *screen : QGuiApplication::screens())
        watchScreen(screen);
    connect(qApp, &QGuiApplication::screenAdded, this, &FrameDisplays::watchScreen);
    connect(qApp, &QGuiApplication::screenRemoved, this, &FrameDisplays::onScreenRemoved);
    connect(qApp, &QGuiApplication::primaryScreenChanged, this, &FrameDisplays::arrangeLater);
}

FrameDisplays::~FrameDisplays() = default;

void FrameDisplays::watchScreen(QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &FrameDisplays::arrangeLater);
    connect(screen, &QScreen::availableGeometryChanged, this, &FrameDisplays::arrangeLater);
    arrangeLater();
}

void FrameDisplays::onScreenRemoved(QScreen *screen)
{
    m_gone = screen->geometry();
    arrangeLater();
}

// Screens change in bursts, and while Qt tells of one going it still moves windows itself.
void FrameDisplays::arrangeLater()
{
    if (!std::exchange(m_isDue, true))
        QTimer::singleShot(0, this, [this] {
            m_isDue = false;
            arrange();
        });
}

void FrameDisplays::add(QWidget *frame)
{
    const auto *window = qobject_cast<FrameWindow *>(frame);
    auto *content = qobject_cast<FrameWidget *>(window ? window->widget() : frame);
    if (!content || !content->getNode())
        return;
    m_places.append({frame, content, content->getNode()->GetDisplayNo() - 1});
    frame->installEventFilter(this);
    takeDisplay(m_places.last());
}

void FrameDisplays::show()
{
    QVector<QPointer<QWidget>> order;
    for (const bool isAway : {true, false}) {
        for (const Place &place : qAsConst(m_places)) {
            if (place.outer && place.isAway == isAway)
                order.append(place.outer);
        }
    }
    for (const QPointer<QWidget> &frame : order) {
        if (!frame)
            continue;
        m_recent.removeOne(frame);
        m_recent.prepend(frame);
        // Desktops that are asked to activate several windows at once may end with any of them.
        if (frame == order.last()) {
            DesktopPlacement::present(*frame);
            continue;
        }
        frame->setAttribute(Qt::WA_ShowWithoutActivating);
        frame->show();
        frame->raise();
        frame->setAttribute(Qt::WA_ShowWithoutActivating, false);
    }
    shareDisplays();
}

void FrameDisplays::takeDisplay(Place &place)
{
    const QRect own = DisplayGeometry(place.display);
    const bool wasAway = std::exchange(place.isAway, own.isNull());
    place.content->takeDisplay(place.isAway ? DisplayGeometry(0) : own);
    if (place.isAway == wasAway)
        return;
    if (place.isAway) {
        tellAway(place);
        m_recent.removeOne(place.outer);
        m_recent.append(place.outer);
        place.outer->lower();
    }
}

void FrameDisplays::tellAway(const Place &place) const
{
    const Nodes::BasicFrame *node = place.content->getNode();
    node->StoreMessage(Nodes::LevelWarning,
                       "Дисплей " + std::to_string(place.display + 1) + " не подключён: фрейм «" +
                           node->GetName() + "» показан на основном дисплее, позади других",
                       node->GetNodeLink());
}

void FrameDisplays::arrange()
{
    for (Place &place : m_places) {
        if (place.outer && place.content)
            takeDisplay(place);
    }
    shareDisplays();
    bringBackOthers();
    m_gone = QRect();
}

// Frames that keep each other out of sight lead to each other.
void FrameDisplays::shareDisplays()
{
    for (const Place &place : qAsConst(m_places)) {
        if (!place.outer || !place.content)
            continue;
        const QVector<QPointer<QWidget>> frames = sharing(*place.outer);
        const bool isShared = std::any_of(m_places.begin(), m_places.end(), [&](const Place &p) {
            return p.isAway && frames.contains(p.outer);
        });
        FrameTabs::renew(*place.outer, isShared ? frames : QVector<QPointer<QWidget>>());
    }
}

QVector<QPointer<QWidget>> FrameDisplays::sharing(const QWidget &frame) const
{
    QVector<QPointer<QWidget>> frames;
    const int screen = ScreenNumber(&frame);
    for (const Place &place : m_places) {
        if (place.outer && ScreenNumber(place.outer) == screen)
            frames.append(place.outer);
    }
    return frames;
}

bool FrameDisplays::standsByItself(const QWidget &window)
{
    switch (window.windowType()) {
    case Qt::Popup:
    case Qt::ToolTip:
    case Qt::Desktop:
        return false;
    default:
        // Embedded elements are windows to Qt, in a scene's coordinates.
        return !window.graphicsProxyWidget() && !qobject_cast<const FrameWidget *>(&window);
    }
}

// Windows over a fitted frame have moved with it; this is for the rest: dialogs, the alarm window,
// whatever has no frame.
void FrameDisplays::bringBackOthers()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (standsByItself(*window))
            DesktopPlacement::bringBack(*window, m_gone);
    }
}

QVector<QPointer<QWidget>> FrameDisplays::frames() const
{
    QVector<QPointer<QWidget>> frames;
    for (const Place &place : m_places)
        frames.append(place.outer);
    return frames;
}

QWidget *FrameDisplays::frameOn(int screen) const
{
    QWidget *first = nullptr;
    for (const Place &place : m_places) {
        if (!place.outer || ScreenNumber(place.outer) != screen)
            continue;
        if (!FrameTabs::of(*place.outer))
            return place.outer;
        if (!first || m_recent.indexOf(place.outer) < m_recent.indexOf(first))
            first = place.outer;
    }
    return first;
}

FrameMapping FrameDisplays::mappingOn(int screen) const
{
    const QWidget *frame = frameOn(screen);
    for (const Place &place : m_places) {
        if (frame && place.outer == frame && place.content && place.content->isFitted())
            return place.content->mapping();
    }
    return FrameMapping::asDrawn(DisplayGeometry(screen).topLeft());
}

bool FrameDisplays::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::WindowActivate) {
        QPointer<QWidget> frame = qobject_cast<QWidget *>(watched);
        m_recent.removeOne(frame);
        m_recent.prepend(frame);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Widgets
