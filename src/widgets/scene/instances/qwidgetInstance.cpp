#include "widgets/scene/instances/qwidgetInstance.h"

#include "widgets/context/ActionSink.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/instances/DisabledCover.h"
#include "widgets/scene/instances/InstanceElement.h"
#include "widgets/scene/instances/InstanceNodes.h"
#include "widgets/scene/instances/InstancePicture.h"

#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QTimer>

#include <utility>

namespace Widgets {

namespace {

const QColor warning(120, 72, 0);
const QColor paper(255, 244, 214);

bool isBelow(const Nodes::ConfigNode *node, const Nodes::ConfigNode *above)
{
    while (node && node != above)
        node = node->GetParent();
    return node && above;
}

} // namespace

QWidget *makeInstanceElement(Nodes::BasicWidget *node, QGraphicsProxyWidget *host,
                             const SceneContextPtr &context)
{
    if (!dynamic_cast<Nodes::widgetInstance *>(node))
        return nullptr;
    auto *element = new qwidgetInstance(node, nullptr, context);
    element->setProxy(host);
    return element;
}

qwidgetInstance::qwidgetInstance(Nodes::BasicWidget *node, QWidget *parent,
                                 const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_context(context),
      m_instance(dynamic_cast<Nodes::widgetInstance *>(node))
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_binding.bind(this, m_instance.get());
    qwidgetInstance::onUpdateProperties(nullptr);
}

// Elements before their nodes.
qwidgetInstance::~qwidgetInstance()
{
    dropContent();
}

const PropertyBindings &qwidgetInstance::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetInstance>(Then::Repaint),
        PropertyRow::takes<&qwidgetInstance::takeRoom>(Then::Repaint, Prop::Fit),
        PropertyRow::takes<&qwidgetInstance::takeEnabled>(Then::Repaint, Prop::Disabled),
        PropertyRow::only(Then::Repaint, Prop::Template),
        PropertyRow::only(Then::Nothing, Prop::Signal),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetInstance::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetInstance *node = m_instance.get();
    if (!node || !takeOver(*node, property))
        return;
    if (isActive())
        refresh();
    repaintAll();
}

// Asked for when rights may have changed as well: each element judges them for itself.
void qwidgetInstance::onValueUpdated(Nodes::SignalValue)
{
    for (ProxyWidget *host : hosts())
        host->start();
}

void qwidgetInstance::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
    const Nodes::widgetInstance *node = m_instance.get();
    Nodes::NodesCollection *project = node ? node->GetNodesCollection() : nullptr;
    m_changes = Nodes::ScopedConnection();
    if (on && project && isEditor())
        m_changes = project->ConnectChanged([this](const auto &change) { takeChange(change); });
    if (m_picture)
        m_picture->setActive(on);
    for (const QPointer<ProxyLayer> &layer : m_layers) {
        if (layer)
            on ? layer->start() : layer->stop();
    }
}

void qwidgetInstance::refresh()
{
    Nodes::widgetInstance *node = m_instance.get();
    if (!node || (m_nodes && !m_isOld && m_nodes->isFor(*node))) {
        for (const QPointer<ProxyLayer> &layer : m_layers) {
            if (layer)
                layer->setTransform(placed());
        }
        if (m_cover)
            m_cover->setSize(size());
        return;
    }
    dropContent();
    m_isOld = false;
    m_nodes = std::make_unique<InstanceNodes>(*node, m_context);
    tellMissing();
    if (!m_nodes->root())
        return;
    if (isRuntime() && m_host)
        showLive();
    else
        showPicture();
}

void qwidgetInstance::dropContent()
{
    for (const QPointer<ProxyLayer> &layer : std::exchange(m_layers, {}))
        delete layer.data();
    delete m_cover.data();
    m_picture.reset();
    m_nodes.reset();
}

void qwidgetInstance::showLive()
{
    QGraphicsScene *scene = m_host->scene();
    if (auto *window = dynamic_cast<Nodes::BasicWindow *>(m_nodes->root()))
        m_layers.emplace_back(new ProxyLayer(window, scene, m_context));
    for (const auto &child : m_nodes->root()->Children()) {
        if (auto *layer = dynamic_cast<Nodes::BasicLayer *>(child.get()))
            m_layers.emplace_back(new ProxyLayer(layer, scene, m_context));
    }
    m_host->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    for (const QPointer<ProxyLayer> &layer : m_layers) {
        layer->setTransform(placed());
        layer->setParentItem(m_host);
    }
    m_cover = new DisabledCover(m_host);
    m_cover->setSize(size());
    takeEnabled(*m_instance);
}

void qwidgetInstance::showPicture()
{
    m_picture = std::make_unique<InstancePicture>(*m_nodes->root(), m_context);
    m_picture->setActive(true);
    for (QWidget *element : m_picture->elements()) {
        if (auto *inner = qobject_cast<qwidgetInstance *>(element))
            connect(inner, &qwidgetInstance::redrawn, this, &qwidgetInstance::repaintAll);
    }
}

QList<ProxyWidget *> qwidgetInstance::hosts() const
{
    QList<ProxyWidget *> all;
    for (const QPointer<ProxyLayer> &layer : m_layers) {
        if (layer)
            all += layer->getWidgets();
    }
    return all;
}

Nodes::ConfigNode *qwidgetInstance::content() const
{
    return m_nodes ? m_nodes->root() : nullptr;
}

QString qwidgetInstance::refusal() const
{
    return m_nodes ? m_nodes->refusal() : QString();
}

void qwidgetInstance::takeEnabled(const Nodes::widgetInstance &node)
{
    for (const QPointer<ProxyLayer> &layer : m_layers) {
        if (layer)
            layer->setEnabled(!node.isDisabled());
    }
    if (m_cover)
        m_cover->setVisible(node.isDisabled());
}

void qwidgetInstance::takeRoom(const Nodes::widgetInstance &node)
{
    m_isFitted = node.isFitted();
}

// The tree of a project that is edited changes on this thread only.
void qwidgetInstance::takeChange(const Nodes::NodeChange &change)
{
    const Nodes::widgetInstance *node = m_instance.get();
    if (!node)
        return;
    const bool isTemplates = isBelow(change.node.GetNode(), node->GetTemplate());
    m_isOld |= isTemplates;
    const bool isStructure = change.what == Nodes::NodeChange::ChildAdded ||
                             change.what == Nodes::NodeChange::ChildRemoved;
    if (isTemplates || isStructure || isBelow(change.node.GetNode(), node))
        checkLater();
}

void qwidgetInstance::checkLater()
{
    if (!std::exchange(m_isCheckDue, true))
        QTimer::singleShot(0, this, &qwidgetInstance::check);
}

void qwidgetInstance::check()
{
    m_isCheckDue = false;
    if (!isActive() || !m_instance)
        return;
    refresh();
    repaintAll();
}

void qwidgetInstance::tellMissing() const
{
    if (!isRuntime() || m_context->isPreview() || !m_nodes)
        return;
    const QString missing = m_nodes->missing();
    const QString text = !m_nodes->refusal().isEmpty()
                             ? m_nodes->refusal()
                             : QStringLiteral("не заданы параметры: %1").arg(missing);
    if (!m_nodes->root() || !missing.isEmpty())
        context().actions().journalOnce(
            *m_instance, QStringLiteral("Экземпляр «%1»: %2")
                             .arg(QString::fromStdString(m_instance->GetName()), text)
                             .toStdString());
}

void qwidgetInstance::repaintAll()
{
    DirectPainting::repaint(*this);
    emit redrawn();
}

QTransform qwidgetInstance::placed() const
{
    const QSize drawn = m_nodes ? m_nodes->size() : QSize();
    if (!m_isFitted || drawn.isEmpty())
        return {};
    const double scale = qMin(double(width()) / drawn.width(), double(height()) / drawn.height());
    QTransform placed = QTransform::fromTranslate((width() - scale * drawn.width()) / 2,
                                                  (height() - scale * drawn.height()) / 2);
    return placed.scale(scale, scale);
}

void qwidgetInstance::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintDirectly(painter);
}

void qwidgetInstance::paintDirectly(QPainter &painter)
{
    if (!m_instance || !m_nodes)
        return;
    painter.save();
    if (!m_nodes->root())
        MissingPicture::drawPlaceholder(painter, rect(), m_nodes->refusal());
    if (m_picture) {
        painter.save();
        painter.setClipRect(rect(), Qt::IntersectClip);
        painter.setTransform(placed(), true);
        m_picture->draw(painter);
        painter.restore();
    }
    const QString missing = m_nodes->missing();
    if (isEditor() && !missing.isEmpty()) {
        const QString text = QStringLiteral("не задано: %1").arg(missing);
        const QRect place = rect().adjusted(2, 1, -2, -1);
        painter.fillRect(painter.boundingRect(place, Qt::AlignLeft | Qt::AlignBottom, text) &
                             rect(),
                         paper); // whatever it stands on
        painter.setPen(warning);
        painter.drawText(place, Qt::AlignLeft | Qt::AlignBottom, text);
    }
    if (m_instance->isDisabled() && !m_cover)
        ElementPainting::drawDisabledCover(painter, rect());
    painter.restore();
}

bool qwidgetInstance::event(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange && m_instance)
        takeEnabled(*m_instance); // by rights, too
    return ElementTooltip::show(event, m_instance.get()) || QWidget::event(event);
}

} // namespace Widgets
