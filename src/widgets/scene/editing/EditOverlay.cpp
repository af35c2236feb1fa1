#include "widgets/scene/editing/EditOverlay.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Locker.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/groups/SceneGroups.h"

#include <QFontMetricsF>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <limits>

namespace Widgets {

namespace {

const QColor frameColor(0, 95, 184);
const QColor guideColor(200, 0, 120);

// Elements stand within 16 bits.
constexpr double farthest = 1 << 17;

/// Lines of a rectangle around the host. They leave its lock out: struck through, an open one would
/// look closed.
void addFrame(QVector<QLineF> &lines, const ProxyWidget &host, const QRectF &rect)
{
    lines << QLineF(rect.topLeft(), rect.bottomLeft())
          << QLineF(rect.bottomLeft(), rect.bottomRight())
          << QLineF(rect.bottomRight(), rect.topRight());
    const Locker *lock = host.locker();
    if (!lock || !lock->isVisible()) {
        lines << QLineF(rect.topLeft(), rect.topRight());
        return;
    }
    constexpr double gap = 2;
    const QRectF left = lock->sceneBoundingRect().adjusted(-gap, 0, gap, 0);
    lines << QLineF(rect.topLeft(), {left.left(), rect.top()})
          << QLineF({left.right(), rect.top()}, rect.topRight());
}

/// Scene pixels of one of the screen, where the picture is shown large; else 1.
double finePixel(const QPainter &painter)
{
    return 1 / qMax(1.0, std::abs(painter.worldTransform().m11()));
}

} // namespace

EditOverlay::EditOverlay(QGraphicsScene &scene, const SceneSelection &selection,
                         const SceneGroups &groups)
    : m_selection(selection), m_groups(groups)
{
    setZValue(double(std::numeric_limits<int>::max()) * 2);
    setAcceptedMouseButtons(Qt::NoButton);
    setFlag(ItemHasNoContents);
    scene.addItem(this);
}

EditOverlay::~EditOverlay() = default;

void EditOverlay::setGuides(const Guides &guides)
{
    if (guides.isEmpty() && m_guides.isEmpty())
        return;
    m_guides = guides;
    refresh();
}

void EditOverlay::setFramed(bool on)
{
    if (m_isFramed == on)
        return;
    m_isFramed = on;
    refresh();
}

void EditOverlay::refresh()
{
    const bool isEmpty =
        m_guides.isEmpty() && m_selection.count() < 2 && m_groups.frames().isEmpty();
    if (isEmpty && (flags() & ItemHasNoContents))
        return;
    setFlag(ItemHasNoContents, isEmpty);
    update();
    // An item without contents repaints nothing, nor what it has left.
    for (QGraphicsView *view : isEmpty ? scene()->views() : QList<QGraphicsView *>())
        view->viewport()->update();
}

QRectF EditOverlay::boundingRect() const
{
    return QRectF(-farthest, -farthest, 2 * farthest, 2 * farthest);
}

QPainterPath EditOverlay::shape() const
{
    return {};
}

void EditOverlay::paint(QPainter *painter, const QStyleOptionGraphicsItem *, QWidget *)
{
    painter->setBrush(Qt::NoBrush);
    if (m_isFramed)
        paintFrames(*painter);
    const QVector<QRectF> groups = m_groups.frames();
    if (!groups.isEmpty())
        paintGroups(*painter, groups);
    if (m_selection.count() > 1 && !m_groups.isOneGroup())
        paintKey(*painter);
    if (!m_guides.isEmpty())
        paintGuides(*painter);
}

void EditOverlay::paintFrames(QPainter &painter) const
{
    const double half = finePixel(painter) / 2;
    QVector<QLineF> frames;
    frames.reserve(5 * m_selection.count());
    for (const ProxyWidget *host : m_selection.hosts())
        addFrame(frames, *host, host->geometry().adjusted(-half, -half, half, half));
    painter.setPen(QPen(frameColor, 0));
    painter.drawLines(frames);
}

void EditOverlay::paintGroups(QPainter &painter, const QVector<QRectF> &groups) const
{
    constexpr double margin = SceneGroups::margin;
    QPen pen(frameColor, 1, Qt::DashLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    for (const QRectF &group : groups)
        painter.drawRect(group.adjusted(-margin, -margin, margin, margin));
}

void EditOverlay::paintKey(QPainter &painter) const
{
    const ProxyWidget *key = m_selection.key();
    if (!key)
        return;
    QPen pen(frameColor, 2);
    pen.setCosmetic(true);
    painter.setPen(pen);
    QVector<QLineF> frame;
    const double gap = 2 * finePixel(painter);
    addFrame(frame, *key, key->geometry().adjusted(-gap, -gap, gap, gap));
    painter.drawLines(frame);
}

void EditOverlay::paintGuides(QPainter &painter) const
{
    QColor shade = frameColor;
    shade.setAlpha(40);
    painter.setPen(QPen(frameColor, 0));
    for (const QRectF &place : m_guides.places) {
        painter.fillRect(place, shade);
        painter.drawRect(place);
    }
    painter.setPen(QPen(guideColor, 0));
    painter.drawLines(m_guides.lines);
    const QTransform toDevice = painter.worldTransform();
    painter.resetTransform(); // notes are read at any zoom
    const QFontMetricsF metrics(painter.font());
    for (const Guides::Note &note : m_guides.notes) {
        QRectF box = metrics.boundingRect(note.text).adjusted(-4, -2, 4, 2);
        box.moveCenter(toDevice.map(note.at));
        painter.fillRect(box, Qt::white);
        painter.drawText(box, Qt::AlignCenter, note.text);
    }
}

} // namespace Widgets
