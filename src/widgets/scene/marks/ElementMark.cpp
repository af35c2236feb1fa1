#include "widgets/scene/marks/ElementMark.h"

#include "widgets/scene/ProxyWidget.h"

#include <QEvent>
#include <QGraphicsScene>
#include <QPainter>

#include <limits>

namespace Widgets {

namespace {

// Blue is no colour of any state of the plant; the light lines part it from any ground.
const QColor ink(0x0b, 0x4f, 0xb3);
const QColor halo(Qt::white);
constexpr qreal gap = 2;   // between the element and the frame
constexpr qreal width = 4; // of the frame, of it 1 on either side is light

} // namespace

ElementMark *ElementMark::put(ProxyWidget &element)
{
    QGraphicsScene *scene = element.scene();
    if (!scene)
        return nullptr;
    delete in(*scene);
    auto *mark = new ElementMark(element);
    scene->addItem(mark);
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

ElementMark::ElementMark(ProxyWidget &element) : m_element(&element)
{
    setZValue(std::numeric_limits<int>::max());
    setAcceptedMouseButtons(Qt::NoButton);
    follow();
    connect(&element, &QGraphicsWidget::geometryChanged, this, &ElementMark::follow);
    connect(&element, &QGraphicsObject::visibleChanged, this,
            [this] { setVisible(m_element && m_element->isVisible()); });
    connect(&element, &QObject::destroyed, this, &QObject::deleteLater);
    connect(&m_timer, &QTimer::timeout, this, &ElementMark::onTick);
    m_timer.start(BlinkInterval);
}

void ElementMark::follow()
{
    if (!m_element)
        return;
    const qreal margin = gap + width;
    prepareGeometryChange();
    m_outline = m_element->sceneBoundingRect().adjusted(-margin, -margin, margin, margin);
    // Of an element at the edge the frame lies inside: a side that nobody sees marks nothing.
    const QRectF room = m_element->scene() ? m_element->scene()->sceneRect() : QRectF();
    if (room.intersects(m_outline))
        m_outline &= room;
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
    const QRectF line = m_outline.adjusted(width / 2, width / 2, -width / 2, -width / 2);
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
