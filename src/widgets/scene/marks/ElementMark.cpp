#include "widgets/scene/marks/ElementMark.h"

#include "widgets/scene/ProxyWidget.h"

#include <QEvent>
#include <QGraphicsScene>
#include <QPainter>

namespace Widgets {

namespace {

// Blue is no colour of any state of the plant; the light lines part it from any ground.
const QColor ink(0x0b, 0x4f, 0xb3);
const QColor halo(Qt::white);
constexpr qreal gap = 6;   // between the element and the frame: room for that of an alarm
constexpr qreal width = 4; // of the frame, of it 1 on either side is light

} // namespace

ElementMark *ElementMark::put(ProxyWidget &element)
{
    QGraphicsScene *scene = element.scene();
    if (!scene)
        return nullptr;
    delete in(*scene);
    auto *mark = new ElementMark(element);
    scene->installEventFilter(mark);
    return mark;
}

ElementMark *ElementMark::in(const QGraphicsScene &scene)
{
    for (QGraphicsItem *item : scene.items()) {
        if (auto *mark = qobject_cast<ElementMark *>(item->toGraphicsObject()))
            return mark;
    }
    return nullptr;
}

ElementMark::ElementMark(ProxyWidget &element) : ElementOverlay(element, MarkLevel, gap + width)
{
    connect(&m_timer, &QTimer::timeout, this, &ElementMark::onTick);
    m_timer.start(BlinkInterval);
}

void ElementMark::onTick()
{
    if (m_changes == Blinks)
        return deleteLater();
    if (++m_changes == Blinks)
        m_timer.start(StandingTime);
    update();
}

void ElementMark::paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/,
                        QWidget * /*widget*/)
{
    if (!isLit())
        return;
    // A side beyond the edge of the scene would mark nothing.
    const QRectF seen = boundingRect() & scene()->sceneRect();
    const QRectF line = seen.adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(halo, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter->drawRect(line);
    painter->setPen(QPen(ink, width - 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter->drawRect(line);
}

bool ElementMark::eventFilter(QObject * /*watched*/, QEvent *event)
{
    if (event->type() == QEvent::GraphicsSceneMousePress)
        deleteLater();
    return false;
}

} // namespace Widgets
