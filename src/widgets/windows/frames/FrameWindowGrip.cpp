#include "widgets/windows/frames/FrameWindowGrip.h"

#include "widgets/windows/DesktopContext.h"

#include "nodes/system/systemVisualization.h"

#include <QAction>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include <cstdlib>

namespace Widgets {

namespace {

const QColor activeTitle(0xc4, 0xca, 0xd0);
const QColor inactiveTitle(0xdd, 0xe1, 0xe5);
const QColor border(0x7b, 0x85, 0x90);

constexpr int defaultTitleHeight = 25;
constexpr int titlePixelSize = 14;
constexpr int titleIndent = 8;
constexpr double closeButtonAspect = 1.33;
constexpr QSize closeIconSize(28, 21);

const char *const closeButtonStyle =
    "QToolButton#actionClose:!hover{background: white; border:1px solid rgb(180, 180, 180); }"
    "QToolButton#actionClose:hover{background: red; border:none; }";

} // namespace

FrameWindow::Frame::Frame(QWidget *parent)
    : QWidget(parent),
      m_titleHeight(configuredTitleHeight()),
      m_titleLabel(new QLabel(this)),
      m_actionClose(new QAction(this)),
      m_closeButton(new QToolButton(this))
{
    setObjectName(QStringLiteral("frame"));
    setMouseTracking(true);
    setCursor(Qt::ArrowCursor);
    m_titleLabel->setObjectName(QStringLiteral("titleLabel"));
    m_titleLabel->setTextFormat(Qt::PlainText);
    m_titleLabel->setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont font = m_titleLabel->font();
    font.setPixelSize(titlePixelSize);
    m_titleLabel->setFont(font);
    buildCloseButton();
}

FrameWindow::Frame::~Frame()
{
    restoreCursor();
}

void FrameWindow::Frame::setResizeable(bool isResizeable)
{
    m_isResizeable = isResizeable;
    if (!isResizeable)
        restoreCursor();
}

int FrameWindow::Frame::configuredTitleHeight()
{
    const Nodes::systemVisualization *visualization = DesktopContext::visualization();
    return visualization ? visualization->GetTitleHeight() : defaultTitleHeight;
}

void FrameWindow::Frame::buildCloseButton()
{
    QIcon icon(QStringLiteral(":/icons/close_white.png"));
    icon.addFile(QStringLiteral(":/icons/close_red.png"), {}, QIcon::Active);
    m_actionClose->setObjectName(QStringLiteral("actionClose"));
    m_actionClose->setToolTip(tr("Закрыть"));
    m_actionClose->setIcon(icon);
    connect(m_actionClose, &QAction::triggered, this, &Frame::closeRequested);

    m_closeButton->setObjectName(m_actionClose->objectName());
    m_closeButton->setDefaultAction(m_actionClose);
    m_closeButton->setIconSize(closeIconSize);
    m_closeButton->setAutoRaise(true);
    m_closeButton->setFocusPolicy(Qt::NoFocus);
    m_closeButton->setStyleSheet(QLatin1String(closeButtonStyle));
    m_closeButton->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    m_closeButton->setMinimumWidth(int((m_titleHeight - 2) * closeButtonAspect));
    m_closeButton->installEventFilter(this);
}

void FrameWindow::Frame::setTitle(const QString &title)
{
    m_title = title;
    placeTitle();
}

void FrameWindow::Frame::setVisibleButtonClose(bool isVisible)
{
    m_actionClose->setVisible(isVisible);
    m_closeButton->setVisible(isVisible);
    placeTitle();
}

QRect FrameWindow::Frame::clientRect() const
{
    return rect().adjusted(EdgeWidth, EdgeWidth + m_titleHeight, -EdgeWidth, -EdgeWidth);
}

QSize FrameWindow::Frame::outerSize(const QSize &client) const
{
    return {client.width() + 2 * EdgeWidth, client.height() + m_titleHeight + 2 * EdgeWidth};
}

void FrameWindow::Frame::placeTitle()
{
    const int height = m_titleHeight - 2;
    int right = width() - EdgeWidth - 1;
    if (!m_closeButton->isHidden()) {
        right -= m_closeButton->minimumWidth();
        m_closeButton->setGeometry(right, EdgeWidth + 1, m_closeButton->minimumWidth(), height);
    }
    const int left = EdgeWidth + titleIndent;
    m_titleLabel->setGeometry(left, EdgeWidth + 1, qMax(0, right - titleIndent - left), height);
    m_titleLabel->setText(
        m_titleLabel->fontMetrics().elidedText(m_title, Qt::ElideRight, m_titleLabel->width()));
}

bool FrameWindow::Frame::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_closeButton && event->type() == QEvent::Enter && m_grab == Grab::None)
        restoreCursor();
    return QWidget::eventFilter(watched, event);
}

void FrameWindow::Frame::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange)
        update();
    QWidget::changeEvent(event);
}

// Displays may have gone or shrunk while the window was hidden, maximised or minimised.
void FrameWindow::Frame::keepReachable()
{
    QWidget *outer = window();
    if (m_grab != Grab::None || !outer->isVisible() || outer->isMaximized() ||
        outer->isMinimized() || outer->graphicsProxyWidget())
        return;
    const QPoint place = FrameGeometry::reachable(outer->geometry(), m_titleHeight);
    if (place != outer->pos())
        outer->move(place);
}

void FrameWindow::Frame::showEvent(QShowEvent *event)
{
    QMetaObject::invokeMethod(this, &Frame::keepReachable, Qt::QueuedConnection);
    QWidget::showEvent(event);
}

void FrameWindow::Frame::resizeEvent(QResizeEvent *event)
{
    if (m_grab == Grab::None)
        QMetaObject::invokeMethod(this, &Frame::keepReachable, Qt::QueuedConnection);
    placeTitle();
    QWidget::resizeEvent(event);
}

int FrameWindow::Frame::edgesAt(const QPoint &point) const
{
    const QRect area = rect();
    if (!area.adjusted(-EdgeWidth, -EdgeWidth, EdgeWidth, EdgeWidth).contains(point))
        return FrameGeometry::NoEdge;
    const auto isNear = [](int position, int edge) {
        return std::abs(position - edge) <= EdgeWidth;
    };
    int edges = FrameGeometry::NoEdge;
    if (isNear(point.x(), area.left()))
        edges |= FrameGeometry::LeftEdge;
    else if (isNear(point.x(), area.right()))
        edges |= FrameGeometry::RightEdge;
    if (isNear(point.y(), area.top()))
        edges |= FrameGeometry::TopEdge;
    else if (isNear(point.y(), area.bottom()))
        edges |= FrameGeometry::BottomEdge;
    return edges;
}

Qt::CursorShape FrameWindow::Frame::cursorFor(int edges)
{
    switch (edges) {
    case FrameGeometry::LeftEdge:
    case FrameGeometry::RightEdge:
        return Qt::SizeHorCursor;
    case FrameGeometry::TopEdge:
    case FrameGeometry::BottomEdge:
        return Qt::SizeVerCursor;
    case FrameGeometry::TopEdge | FrameGeometry::LeftEdge:
    case FrameGeometry::BottomEdge | FrameGeometry::RightEdge:
        return Qt::SizeFDiagCursor;
    case FrameGeometry::TopEdge | FrameGeometry::RightEdge:
    case FrameGeometry::BottomEdge | FrameGeometry::LeftEdge:
        return Qt::SizeBDiagCursor;
    default:
        return Qt::ArrowCursor;
    }
}

// At most one level on the application's stack, whatever edges the pointer passes.
void FrameWindow::Frame::showCursor(int edges)
{
    m_edges = edges;
    if (edges == FrameGeometry::NoEdge) {
        restoreCursor();
        return;
    }
    const QCursor cursor(cursorFor(edges));
    if (m_overrideCursors > 0) {
        QGuiApplication::changeOverrideCursor(cursor);
        return;
    }
    QGuiApplication::setOverrideCursor(cursor);
    ++m_overrideCursors;
}

void FrameWindow::Frame::restoreCursor()
{
    m_edges = FrameGeometry::NoEdge;
    for (; m_overrideCursors > 0; --m_overrideCursors)
        QGuiApplication::restoreOverrideCursor();
    setCursor(Qt::ArrowCursor);
}

bool FrameWindow::Frame::isTitle(const QPoint &point) const
{
    return rect().contains(point) && point.y() < EdgeWidth + m_titleHeight;
}

void FrameWindow::Frame::hover(const QPoint &point)
{
    if (m_isResizeable && !window()->isMaximized())
        showCursor(edgesAt(point));
}

QSize FrameWindow::Frame::smallest() const
{
    return window()->minimumSizeHint().expandedTo(window()->minimumSize());
}

void FrameWindow::Frame::drag(const QPoint &globalPoint)
{
    const QPoint delta = globalPoint - m_pressPoint;
    if (m_grab == Grab::Resize) {
        window()->setGeometry(FrameGeometry::resized(m_startGeometry, m_edges, delta, smallest(),
                                                     window()->maximumSize()));
        return;
    }
    const QRect moved = m_startGeometry.translated(delta);
    window()->move(FrameGeometry::reachable(moved, m_titleHeight));
}

void FrameWindow::Frame::mouseMoveEvent(QMouseEvent *event)
{
    if (m_grab == Grab::None)
        hover(event->pos());
    else
        drag(event->globalPos());
}

void FrameWindow::Frame::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || window()->isMaximized())
        return;
    hover(event->pos());
    if (m_edges != FrameGeometry::NoEdge)
        m_grab = Grab::Resize;
    else if (isTitle(event->pos()))
        m_grab = Grab::Move;
    m_pressPoint = event->globalPos();
    m_startGeometry = window()->geometry();
}

void FrameWindow::Frame::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_grab = Grab::None;
    hover(event->pos());
}

void FrameWindow::Frame::mouseDoubleClickEvent(QMouseEvent *event)
{
    m_grab = Grab::None;
    const bool isOnEdge = m_isResizeable && !window()->isMaximized() && edgesAt(event->pos());
    if (event->button() != Qt::LeftButton || !m_isResizeable || isOnEdge || !isTitle(event->pos()))
        return;
    restoreCursor();
    if (window()->isMaximized())
        window()->showNormal();
    else
        window()->showMaximized();
}

// While an edge is dragged the window lags behind the pointer, which is no leaving.
void FrameWindow::Frame::leaveEvent(QEvent *event)
{
    if (m_grab == Grab::None)
        restoreCursor();
    QWidget::leaveEvent(event);
}

void FrameWindow::Frame::hideEvent(QHideEvent *event)
{
    m_grab = Grab::None;
    restoreCursor();
    QWidget::hideEvent(event);
}

void FrameWindow::Frame::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect title(0, 0, width(), EdgeWidth + m_titleHeight);
    painter.fillRect(rect(), inactiveTitle);
    painter.fillRect(title, isActiveWindow() ? activeTitle : inactiveTitle);
    painter.setPen(border);
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace Widgets
