#include "editor/sceneview/EditedView.h"

#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/editing/SceneEditor.h"

#include <QGraphicsScene>
#include <QMouseEvent>
#include <QScrollBar>

#include <cmath>

namespace Editor {

namespace {

constexpr int desk = 480;           // scene pixels on each side of the page
constexpr int fitMargin = 16;       // pixels of the screen
constexpr int noticeHeight = 64;    // pixels of the screen, of two lines at most
constexpr double greatestFit = 4.0; // a small selection is not blown up to single pixels

} // namespace

EditedView::EditedView(Nodes::ConfigNode *node, QWidget *parent) : ProxyView(node, parent)
{
    setAttribute(Qt::WA_DeleteOnClose, false); // the document owns it
    setFrameShape(NoFrame);
    setMinimumSize(200, 120);
    viewport()->setMouseTracking(true);
}

QRectF EditedView::page() const
{
    return scene() ? scene()->sceneRect() : QRectF();
}

// What was dragged off the page can be scrolled to and brought back. A preview shows the page.
void EditedView::showPage()
{
    const double around = context().isEditor() ? desk : 0;
    const QRectF shown = page().adjusted(-around, -around, around, around);
    if (shown == sceneRect())
        return;
    setSceneRect(shown);
    const Qt::ScrollBarPolicy bars =
        context().isEditor() ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    horizontalScrollBar()->show(); // in the place that the policy gives it; a view hides its bars
    verticalScrollBar()->show();
    setHorizontalScrollBarPolicy(bars);
    setVerticalScrollBarPolicy(bars);
}

void EditedView::setBackdrop(const SceneBackdrop &backdrop)
{
    m_backdrop = backdrop;
    viewport()->update();
}

QPointF EditedView::centre() const
{
    return mapToScene(viewport()->rect().center());
}

int EditedView::percent() const
{
    return qRound(100 * transform().m11());
}

void EditedView::setPercent(int percent)
{
    const double scale = qBound(LeastPercent, percent, GreatestPercent) / 100.0;
    const QPointF middle = centre();
    setTransform(QTransform::fromScale(scale, scale));
    centerOn(middle);
}

void EditedView::fit(const QRectF &rect)
{
    showPage();
    const QSizeF room = viewport()->size() - QSize(2 * fitMargin, 2 * fitMargin);
    if (rect.isEmpty() || room.isEmpty())
        return;
    const double scale =
        qMin(greatestFit, qMin(room.width() / rect.width(), room.height() / rect.height()));
    setPercent(static_cast<int>(std::floor(100 * scale)));
    centerOn(rect.center());
}

void EditedView::fitPage(bool isEnlarged)
{
    fit(page());
    if (percent() > 100 && !isEnlarged)
        setPercent(100);
    m_fitted = percent();
    m_fittedSize = viewport()->size();
}

// A notice below comes and goes: what is about to be pressed must not move with it.
bool EditedView::isJustNotice(const QSize &size) const
{
    return size.width() == m_fittedSize.width() &&
           std::abs(size.height() - m_fittedSize.height()) <= noticeHeight;
}

void EditedView::resizeEvent(QResizeEvent *event)
{
    const bool wasFitted = isPageFitted();
    ProxyView::resizeEvent(event);
    if (wasFitted && !isJustNotice(viewport()->size()))
        fitPage(m_fitted > 100);
}

void EditedView::drawBackground(QPainter *painter, const QRectF &rect)
{
    const SceneBackdrop shown = context().isEditor() ? m_backdrop : m_backdrop.preview();
    shown.paint(*painter, rect, page());
}

// Wheel, keys, drags and layout all change it; none tells.
void EditedView::paintEvent(QPaintEvent *event)
{
    showPage();
    ProxyView::paintEvent(event);
    emit painted();
    if (viewportTransform() == m_shown)
        return;
    m_shown = viewportTransform();
    emit viewChanged();
}

bool EditedView::isDragging() const
{
    Widgets::ProxyScene *shown = proxyScene();
    Widgets::SceneEditor *tool = shown ? shown->sceneEditor() : nullptr;
    return tool && (tool->drag().isActive() || !rubberBandRect().isNull());
}

bool EditedView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::MouseMove) {
        const auto &mouse = *static_cast<QMouseEvent *>(event);
        emit pointerMoved(mapToScene(mouse.pos()));
        if (mouse.buttons() & Qt::LeftButton)
            m_edgeScroll.follow(mouse.pos());
    } else if (event->type() == QEvent::Leave) {
        emit pointerLeft();
    }
    return ProxyView::viewportEvent(event);
}

} // namespace Editor
