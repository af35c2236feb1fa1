#include "widgets/scene/ProxyWidget.h"

#include "widgets/elements/IWidget.h"
#include "widgets/elements/painting/DirectPainting.h"
#include "widgets/scene/ElementFactory.h"
#include "widgets/scene/editing/EditedScene.h"
#include "widgets/scene/editing/ElementEditor.h"
#include "widgets/scene/editing/Locker.h"
#include "widgets/scene/marks/MarkedScene.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/convert/ValueConversions.h"

#include <QGraphicsScene>
#include <QGraphicsSceneResizeEvent>
#include <QLayout>
#include <QPainter>
#include <QTimer>
#include <QWidget>

#include <utility>

namespace Widgets {

namespace {

constexpr int settleTime = 100; // ms; a burst of writes shows its last state only

} // namespace

ProxyWidget::ProxyWidget(QGraphicsItem *parent, Qt::WindowFlags flags)
    : QGraphicsProxyWidget(parent, flags)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setMinimumSize(0, 0);
}

ProxyWidget::ProxyWidget(Nodes::NodeLink link, QGraphicsItem *parent, Qt::WindowFlags flags,
                         SceneContextPtr context)
    : ProxyWidget(parent, flags)
{
    m_context = std::move(context);
    m_link = link;
    setObjectName(QString::fromStdString(m_link.GetLinkName(true)));
    connect(this, &ProxyWidget::propertyUpdated, this, &ProxyWidget::onPropertyUpdated);
    build();
    start();
}

void ProxyWidget::build()
{
    if (!m_context->isRuntime())
        (void)editor();
    if (Nodes::BasicWidget *node = getNode())
        host(*node);
    if (m_context->isRuntime())
        installEventFilter(m_context->gestures());
    if (!m_editor)
        return;
    setFrame();
    m_editor->rememberGeometry();
}

ProxyWidget::~ProxyWidget()
{
    // The base destroys the element, when this is no ProxyWidget any more.
    if (widget())
        disconnect(widget(), &QObject::destroyed, this, &ProxyWidget::forgetElement);
    leaveSelection(QVariant());
    stop();
}

void ProxyWidget::host(Nodes::BasicWidget &node)
{
    m_denial = node.GetDenial();
    m_type = UserType + static_cast<int>(node.GetNodeType().GetCode());
    if (QWidget *created = createWidget(&node)) {
        m_element = dynamic_cast<IWidget *>(created);
        m_direct = dynamic_cast<DirectPainting *>(created);
        // Before Qt's own connection: it deletes this item when the element is deleted.
        connect(created, &QObject::destroyed, this, &ProxyWidget::forgetElement);
        // The size is that of the node, also where it is less than the layout asks for.
        if (created->layout())
            created->layout()->setSizeConstraint(QLayout::SetNoConstraint);
        setWidget(created);
        setMinimumSize(0, 0);
        setGeometry(created->geometry());
        Utils::NodeRelay::Handlers handlers;
        handlers.propertyChanged = [this](Nodes::BasicProperty *property) {
            property ? emit propertyUpdated(property) : takeAll();
        };
        m_relay.connect(&node, std::move(handlers));
    }
    setPositionItems(QRectF());
    setZValue(node.GetZOrder());
    takeVisible(node);
    takeFlags(node);
}

QWidget *ProxyWidget::createWidget(Nodes::BasicWidget *node)
{
    QWidget *created = ElementFactory::create(node, this, m_context);
    if (created && m_context->isRuntime()) {
        created->setDisabled(node->isDisabled());
        nameElement(*created, *node);
    }
    return created;
}

void ProxyWidget::nameElement(QWidget &widget, const Nodes::BasicWidget &node) const
{
    const Nodes::ConfigNode *parent = node.GetParent();
    std::string name = "node id: " + std::to_string(node.GetId()) + " parent: ";
    if (parent)
        name += parent->GetName();
    name += " parent id: " + std::to_string(parent ? parent->GetId() : 0);
    widget.setObjectName(QString::fromStdString(name));
}

Nodes::BasicWidget *ProxyWidget::getNode() const
{
    return dynamic_cast<Nodes::BasicWidget *>(m_link.GetNode());
}

void ProxyWidget::start()
{
    if (!m_element || !m_link.isValid())
        return;
    judgeAccess();
    m_element->start();
    markAlarms();
}

void ProxyWidget::markAlarms()
{
    if (auto *marked = dynamic_cast<MarkedScene *>(scene()))
        marked->markAlarms(*this);
}

void ProxyWidget::judgeAccess()
{
    Nodes::BasicWidget *node = m_element ? getNode() : nullptr;
    if (!node)
        return;
    const bool isSame = node->JudgeAccess() == m_denial;
    // An element may show other signals beside its own, and an edit belongs to who began it.
    if (isSame && m_element->isActive())
        m_element->onValueUpdated(node->GetValue());
    if (isSame)
        return;
    m_denial = node->GetDenial();
    takeVisible(*node);
    takeDisabled(*node);
    if (m_element->isActive())
        m_element->onUpdateProperties(nullptr);
}

// Without its node an element cannot be stopped any more, and needs not.
void ProxyWidget::stop()
{
    if (m_element && m_link.isValid())
        m_element->stop();
}

void ProxyWidget::retire()
{
    if (m_element)
        m_element->stop();
    m_relay.disconnect();
}

void ProxyWidget::forgetElement()
{
    m_element = nullptr;
    m_direct = nullptr;
}

void ProxyWidget::takeFlags(const Nodes::BasicWidget &node)
{
    takeMovable(node);
    takeSelectable(node);
}

void ProxyWidget::takeMovable(const Nodes::BasicWidget &node)
{
    setFlag(ItemIsMovable, m_isPickable && node.isMovable());
    if (m_editor)
        m_editor->takeMovable(node.isMovable());
}

void ProxyWidget::takeSelectable(const Nodes::BasicWidget &node)
{
    setFlag(ItemIsSelectable, m_isPickable && node.isSelectable());
    setAcceptDrops(node.isSelectable());
    setFocusPolicy(node.isSelectable() ? Qt::ClickFocus : Qt::NoFocus);
}

void ProxyWidget::takeVisible(const Nodes::BasicWidget &node)
{
    setVisible(node.isVisible());
}

// A hidden widget tells of its move only when it is shown, but where it stands is known before.
void ProxyWidget::takePlace(const Nodes::BasicWidget &node)
{
    if (!isVisible() && widget())
        setGeometry(Utils::NRectToQRect(node.GetGeometry()));
    if (m_editor)
        m_editor->rememberGeometry(); // also after an undo: the next edit starts from there
    setCornerPositions(QRectF());
    setPositionItems(QRectF());
    if (EditedScene *edited = editedScene())
        edited->takePlaced(*this);
}

void ProxyWidget::takeDisabled(const Nodes::BasicWidget &node)
{
    if (m_context->isRuntime() && widget())
        widget()->setDisabled(node.isDisabled());
}

// After several at once, or changes made on another thread, nobody knows which they were.
void ProxyWidget::takeAll()
{
    const Nodes::BasicWidget *node = getNode();
    if (!node)
        return;
    setZValue(node->GetZOrder());
    takeDisabled(*node);
    markAlarms();
    takePlace(*node);
    if (EditedScene *edited = editedScene())
        edited->takeRegrouped(*this);
    later(&ProxyWidget::takeVisible);
    // The layer may hold the elements back: what has not changed is left to it.
    if (!locker() || locker()->isLocked() == node->isMovable())
        later(&ProxyWidget::takeMovable);
    if (!locker() || acceptDrops() != node->isSelectable())
        later(&ProxyWidget::takeSelectable);
}

void ProxyWidget::later(void (ProxyWidget::*take)(const Nodes::BasicWidget &))
{
    QTimer::singleShot(settleTime, this, [this, take] {
        if (const Nodes::BasicWidget *node = getNode())
            (this->*take)(*node);
    });
}

void ProxyWidget::onPropertyUpdated(Nodes::BasicProperty *property)
{
    const Nodes::BasicWidget *node = getNode();
    if (!property || !node)
        return;
    using Prop = Nodes::BasicWidget::Prop;
    switch (property->GetValueId()) {
    case Prop::ZOrder:
        setZValue(node->GetZOrder());
        break;
    case Prop::Visible:
        later(&ProxyWidget::takeVisible);
        break;
    case Prop::Selectable:
        later(&ProxyWidget::takeSelectable);
        break;
    case Prop::Movable:
        takeMovable(*node);
        break;
    case Prop::Disabled:
        takeDisabled(*node);
        break;
    case Prop::Signal:
    case Prop::AlarmIndication:
        markAlarms();
        break;
    case Prop::Group:
        if (EditedScene *edited = editedScene())
            edited->takeRegrouped(*this);
        break;
    case Prop::X:
    case Prop::Y:
    case Prop::Width:
    case Prop::Height:
        takePlace(*node);
        break;
    default:
        break;
    }
}

void ProxyWidget::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget)
{
    if (!m_direct) {
        QGraphicsProxyWidget::paint(painter, option, widget);
        return;
    }
    // What is painted beyond the item is not painted over when the item changes. The scene takes
    // the clip back.
    painter->setClipRect(rect(), Qt::IntersectClip);
    m_direct->paintDirectly(*painter);
}

// A widget that had no area stays unmapped inside of an item, and its updates are lost.
void ProxyWidget::resizeEvent(QGraphicsSceneResizeEvent *event)
{
    QGraphicsProxyWidget::resizeEvent(event);
    const bool isBack = event->oldSize().isEmpty() && !event->newSize().isEmpty();
    if (!isBack || !widget() || !widget()->isVisible())
        return;
    // Unseen by this item: an item that is hidden loses selection, focus and mouse.
    widget()->removeEventFilter(this);
    widget()->hide();
    widget()->show();
    widget()->installEventFilter(this);
}

QVariant ProxyWidget::itemChange(GraphicsItemChange change, const QVariant &value)
{
    const QVariant result = QGraphicsProxyWidget::itemChange(change, value);
    if (change == ItemSelectedChange) {
        if (m_editor)
            m_editor->takeSelected(value.toBool());
        emit selectedChanged(value.toBool());
    } else if (change == ItemSelectedHasChanged) {
        if (EditedScene *edited = editedScene())
            edited->takeSelected(*this, value.toBool());
    } else if (change == ItemSceneChange) {
        leaveSelection(value);
    } else if (change == ItemPositionHasChanged) {
        emit positionChanged(value.toPointF());
    }
    return result;
}

} // namespace Widgets
