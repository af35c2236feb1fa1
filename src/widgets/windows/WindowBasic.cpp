#include "widgets/windows/WindowBasic.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/OverlayWindows.h"
#include "widgets/windows/frames/WindowDecoration.h"

#include "utils/convert/ValueConversions.h"

#include <QCloseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace Widgets {

using Nodes::BasicWindow;

namespace {

constexpr int titleHeightWithButton = 10;
constexpr int editorTopMargin = 20;

QRect geometryOf(const BasicWindow &node)
{
    return Utils::NRectToQRect(node.GetGeometry());
}

Qt::WindowModality modalityOf(const BasicWindow &node)
{
    switch (node.GetModality()) {
    case BasicWindow::ModalityWindow:
        return Qt::WindowModal;
    case BasicWindow::ModalityApplication:
        return Qt::ApplicationModal;
    case BasicWindow::ModalityNone:
        break;
    }
    return Qt::NonModal;
}

} // namespace

WindowBasic::WindowBasic(BasicWindow *node, QWidget *parent) : ProxyView(node, parent), m_node(node)
{
    connect(this, &WindowBasic::updateProperty, this, &WindowBasic::onUpdateProperties);
    setFrameShape(QFrame::NoFrame);
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    viewport()->setMouseTracking(true);
    viewport()->setAutoFillBackground(false); // drawBackground covers everything
    if (!isRuntime())
        return;
    Utils::NodeRelay::Handlers handlers;
    handlers.propertyChanged = [this](Nodes::BasicProperty *) { emit updateProperty(); };
    m_relay.connect(node, std::move(handlers));
    installEventFilter(context().gestures());
    viewport()->installEventFilter(context().gestures());
}

WindowBasic::~WindowBasic() = default;

BasicWindow::enBorderType WindowBasic::getBorderType() const
{
    return m_node ? m_node->GetBorderType() : BasicWindow::BorderFrameless;
}

bool WindowBasic::isRuntime() const
{
    return context().isRuntime();
}

void WindowBasic::SetTitle(QString title)
{
    m_title = std::move(title);
    setWindowTitle(m_title);
}

void WindowBasic::judgeAccess()
{
    const BasicWindow *node = getNode();
    viewport()->setVisible(!isRuntime() || !node || HasPrivilege(Nodes::PrivilegeView, node));
}

bool WindowBasic::mayClose() const
{
    const BasicWindow *node = getNode();
    return m_isCloseAllowed || !isRuntime() || !node || HasPrivilege(Nodes::PrivilegeClose, node);
}

bool WindowBasic::mayCloseAll(const QWidget &frame)
{
    const QList<WindowBasic *> windows = frame.findChildren<WindowBasic *>();
    return std::all_of(windows.begin(), windows.end(),
                       [](const WindowBasic *window) { return window->mayClose(); });
}

void WindowBasic::setMapping(const FrameMapping &mapping)
{
    m_mapping = mapping;
    setTransform(mapping.viewTransform());
    setRenderHint(QPainter::SmoothPixmapTransform, mapping.isScaled());
}

QSize WindowBasic::sizeHint() const
{
    const BasicWindow *node = getNode();
    return node && isRuntime() ? DesktopPlacement::shownSize(m_mapping, geometryOf(*node))
                               : ProxyView::sizeHint();
}

void WindowBasic::onUpdateProperties()
{
    if (!m_node)
        return;
    if (isRuntime())
        takeRuntimeProperties();
    else if (context().isEditor())
        takeEditingGeometry();
}

// An open window stands where its action or its frame put it: only a changed node moves it.
void WindowBasic::takeRuntimeProperties()
{
    SetTitle(QString::fromStdString(m_node->GetTitle()));
    const BasicWindow::enBorderType border = m_node->GetBorderType();
    m_isTitleVisible = border == BasicWindow::BorderResizable;
    m_isCloseButtonVisible = m_node->HasCloseButton();
    m_hasFrame = m_node->HasFrame();
    m_titleHeight = m_isCloseButtonVisible ? titleHeightWithButton : 0;
    const bool hasMargin = border != BasicWindow::BorderFrameless;
    m_frameMargin = hasMargin ? 2 * style()->pixelMetric(QStyle::PM_DefaultFrameWidth) : 0;
    m_modality = modalityOf(*m_node);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent, m_node->GetBackgroundColor().alpha == 255);
    viewport()->update();
    const QRect geometry = geometryOf(*m_node);
    const QRect previous = std::exchange(m_nodeGeometry, geometry);
    if (geometry != previous)
        follow(previous, geometry);
}

// Inside a frame a change of the node's geometry is a change of place and size; the node's place
// itself counts from the screen.
void WindowBasic::follow(const QRect &from, const QRect &to)
{
    const QSize size = DesktopPlacement::shownSize(m_mapping, to);
    if (isWindow() || from.isNull()) {
        setGeometry(QRect(m_mapping.toScreen(to.topLeft()), size));
        return;
    }
    QWidget *outer = DesktopPlacement::outermost(this);
    if (outer->isMaximized())
        return;
    outer->move(outer->pos() + m_mapping.toScreen(to.topLeft()) -
                m_mapping.toScreen(from.topLeft()));
    const auto *decoration = WindowDecoration::around(this);
    outer->resize(decoration ? decoration->outerSize(size) : size);
}

void WindowBasic::takeEditingGeometry()
{
    QRect geometry = geometryOf(*m_node);
    if (const QWidget *parent = parentWidget()) {
        const int left = (parent->width() - geometry.width()) / 2;
        const int top = (parent->height() - geometry.height()) / 2;
        geometry.moveTopLeft(QPoint(qMax(0, left), qMax(editorTopMargin, top)));
    }
    setGeometry(geometry);
    m_isTitleVisible = m_isCloseButtonVisible = m_hasFrame = false;
    m_frameMargin = m_titleHeight = 0;
    m_title.clear();
}

void WindowBasic::updateGeometryWindow()
{
    if (!m_node)
        return;
    setWindowTitle(QString::fromStdString(m_node->GetTitle()));
    const QSize size = isRuntime() ? sizeHint() : geometryOf(*m_node).size();
    setGeometry(QRect(QPoint(0, 0), size));
    if (!isRuntime())
        return;
    const bool isResizable = getBorderType() == BasicWindow::BorderResizable;
    const auto policy = isResizable ? QSizePolicy::Expanding : QSizePolicy::Fixed;
    setSizePolicy(policy, policy);
}

void WindowBasic::startScene()
{
    ProxyScene *shown = proxyScene();
    if (shown && isRuntime())
        shown->start();
}

void WindowBasic::stopScene()
{
    ProxyScene *shown = proxyScene();
    if (shown && isRuntime())
        shown->stop();
}

// Spontaneous events come from minimising and restoring: nobody opened or closed the window then.
void WindowBasic::showEvent(QShowEvent *event)
{
    ProxyView::showEvent(event);
    judgeAccess();
    startScene();
    if (isWindow() && isModal())
        OverlayWindows::instance().add(this);
    if (isRuntime() && m_node && !event->spontaneous())
        context().actions().trigger(m_node->GetOnOpenActions(), this, std::nullopt,
                                    ActionOrigin::OnOpen);
}

void WindowBasic::hideEvent(QHideEvent *event)
{
    if (isRuntime() && m_node && !event->spontaneous())
        context().actions().trigger(m_node->GetOnCloseActions(), this, std::nullopt,
                                    ActionOrigin::OnClose);
    OverlayWindows::instance().remove(this);
    stopScene();
    ProxyView::hideEvent(event);
}

void WindowBasic::closeEvent(QCloseEvent *event)
{
    if (!mayClose())
        return event->ignore();
    ProxyView::closeEvent(event);
    if (event->isAccepted())
        emit closed();
}

void WindowBasic::drawBackground(QPainter *painter, const QRectF &rect)
{
    const BasicWindow *node = getNode();
    painter->fillRect(rect, node ? Utils::NColorToQColor(node->GetBackgroundColor())
                                 : palette().color(QPalette::Window));
}

} // namespace Widgets
