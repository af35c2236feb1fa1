#include "editor/sceneview/EditedView.h"

#include "widgets/context/SceneContext.h"

#include <QMouseEvent>

#include <cmath>

namespace Editor {

namespace {

constexpr int fitMargin = 16;       // pixels of the screen
constexpr double greatestFit = 4.0; // a small selection is not blown up to single pixels

} // namespace

EditedView::EditedView(Nodes::ConfigNode *node, QWidget *parent) : ProxyView(node, parent)
{
    setAttribute(Qt::WA_DeleteOnClose, false); // the document owns it
    setFrameShape(NoFrame);
    setMinimumSize(200, 120);
    viewport()->setMouseTracking(true);
}

void EditedView::setBackdrop(const SceneBackdrop &backdrop)
{
    m_backdrop = backdrop;
    viewport()->update();
}

int EditedView::percent() const
{
    return qRound(100 * transform().m11());
}

void EditedView::setPercent(int percent)
{
    const double scale = qBound(LeastPercent, percent, GreatestPercent) / 100.0;
    const QPointF centre = mapToScene(viewport()->rect().center());
    setTransform(QTransform::fromScale(scale, scale));
    centerOn(centre);
}

void EditedView::fit(const QRectF &rect)
{
    const QSizeF room = viewport()->size() - QSize(2 * fitMargin, 2 * fitMargin);
    if (rect.isEmpty() || room.isEmpty())
        return;
    const double scale =
        qMin(greatestFit, qMin(room.width() / rect.width(), room.height() / rect.height()));
    setPercent(static_cast<int>(std::floor(100 * scale)));
    centerOn(rect.center());
}

void EditedView::drawBackground(QPainter *painter, const QRectF &rect)
{
    const SceneBackdrop shown = context().isEditor() ? m_backdrop : m_backdrop.preview();
    shown.paint(*painter, rect, sceneRect());
}

// Wheel, keys, drags and layout all change it; none tells.
void EditedView::paintEvent(QPaintEvent *event)
{
    ProxyView::paintEvent(event);
    emit painted();
    if (viewportTransform() == m_shown)
        return;
    m_shown = viewportTransform();
    emit viewChanged();
}

bool EditedView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove)
        emit pointerMoved(mapToScene(static_cast<QMouseEvent *>(event)->pos()));
    else if (event->type() == QEvent::Leave)
        emit pointerLeft();
    return ProxyView::viewportEvent(event);
}

} // namespace Editor
