#include "widgets/scene/editing/ElementEditor.h"

#include "widgets/scene/editing/Border.h"
#include "widgets/scene/editing/DragAndDropItem.h"
#include "widgets/scene/editing/Locker.h"
#include "widgets/scene/editing/ScreenPixel.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/ValueConversions.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsSceneMouseEvent>

#include <memory>
#include <utility>

namespace Widgets {

namespace {

// An element smaller than this has no room for a lock.
constexpr double lockerWidth = 50;
constexpr double lockerHeight = 5;

// Of ProxyWidget::TypeFrame.
constexpr int frameInside = 0;
constexpr int frameOutside = 1;

} // namespace

ElementEditor::ElementEditor(QGraphicsProxyWidget &host, const Nodes::NodeLink &link,
                             bool isDecorated)
    : m_host(host), m_link(link), m_grabbers(host)
{
    if (!isDecorated)
        return;
    m_border = new Border(&host);
    m_locker = new Locker(&host);
    if (const Nodes::BasicWidget *element = node())
        m_locker->setLock(!element->isMovable());
    connect(m_locker, &Locker::lockChanged, this, &ElementEditor::lockChanged);
}

ElementEditor::~ElementEditor()
{
    delete m_drop;
    delete m_border;
    delete m_locker;
}

Nodes::BasicWidget *ElementEditor::node() const
{
    return dynamic_cast<Nodes::BasicWidget *>(m_link.GetNode());
}

void ElementEditor::setTypeFrame(int type)
{
    m_frameType = type;
    place(m_host.geometry());
}

void ElementEditor::place(const QRectF &rect)
{
    if (!m_border)
        return;
    const QSizeF box = rect.isEmpty() ? m_host.geometry().size() : rect.size();
    const double grown = m_frameType == frameOutside ? 1 : -1;
    m_border->setPos(-grown / 2, -grown / 2);
    m_border->setSize(box.width() + grown, box.height() + grown);
    m_border->setOutside(m_frameType == frameOutside);
    m_border->setOutline(m_frameType == frameOutside || m_frameType == frameInside);
    m_locker->setSuppressed(box.width() < lockerWidth || box.height() < lockerHeight);
    const double scale = qMin(1.0, screenPixel(m_host)); // it covers no more where all is large
    m_locker->setScale(scale);
    m_locker->setPos(box.width() - scale * (m_locker->width() + 6),
                     -scale * m_locker->height() / 2);
}

void ElementEditor::showSelected(bool isSelected, bool hasGrabbers)
{
    if (!m_border)
        return;
    m_grabbers.setShown(isSelected && hasGrabbers);
    placeGrabbers(QRectF());
    m_border->setCovered(isSelected && !hasGrabbers && m_frameType == frameOutside);
}

void ElementEditor::placeGrabbers(const QRectF &rect)
{
    m_grabbers.place(rect.isEmpty() ? m_host.geometry() : rect);
}

void ElementEditor::showDrop(bool isAcceptable)
{
    if (!m_drop)
        m_drop = new DragAndDropItem(&m_host);
    m_drop->setPos(0.5, 0.5);
    m_drop->setSize(m_host.size().width() - 1, m_host.size().height() - 1);
    m_drop->setAcceptable(isAcceptable);
}

bool ElementEditor::hideDrop()
{
    const bool isAcceptable = m_drop && m_drop->isAcceptable();
    delete std::exchange(m_drop, nullptr);
    return isAcceptable;
}

void ElementEditor::takeMovable(bool isMovable)
{
    if (m_locker)
        m_locker->setLock(!isMovable);
}

void ElementEditor::takeSelected(bool isSelected)
{
    if (m_locker)
        m_locker->setOwnerSelected(isSelected);
}

void ElementEditor::rememberGeometry()
{
    m_committed = m_host.geometry().toRect();
}

bool ElementEditor::drags(const QGraphicsSceneMouseEvent &event)
{
    const Nodes::BasicWidget *element = node();
    if (event.modifiers() == Qt::ControlModifier || (element && !element->isSelectable()))
        return false;
    m_isMoving = true;
    return true;
}

bool ElementEditor::endsDrag()
{
    const Nodes::BasicWidget *element = node();
    return std::exchange(m_isMoving, false) && element && element->isMovable();
}

void ElementEditor::keyMove(const QRectF &delta)
{
    const Nodes::BasicWidget *element = node();
    if (!m_host.isSelected() || !element || (!delta.topLeft().isNull() && !element->isMovable()))
        return;
    const QRectF now = m_host.geometry();
    m_host.setGeometry(
        QRectF(now.topLeft() + delta.topLeft(), QSizeF(qMax(0.0, now.width() + delta.width()),
                                                       qMax(0.0, now.height() + delta.height()))));
    placeGrabbers(QRectF());
    place(QRectF());
}

QUndoCommand *ElementEditor::geometryChange(QUndoCommand *parent)
{
    const Nodes::BasicWidget *element = node();
    const QRect now = m_host.geometry().toRect();
    if (element && now == m_committed)
        return nullptr;
    auto command = std::make_unique<Utils::CommandGroup>(QString(), parent);
    if (!element)
        return command.release();
    m_committed = now;
    m_isOffered = true;
    using Prop = Nodes::BasicWidget::Prop;
    const std::pair<unsigned, int> values[] = {{Prop::X, now.x()},
                                               {Prop::Y, now.y()},
                                               {Prop::Width, now.width()},
                                               {Prop::Height, now.height()}};
    for (const auto &[property, value] : values)
        new Utils::ChangePropertyCommand(m_link, property, value, command.get());
    command->setText(QStringLiteral("Изменение координат виджета %1")
                         .arg(QString::fromStdString(element->GetName())));
    return command.release();
}

void ElementEditor::takeRefusal()
{
    const Nodes::BasicWidget *element = std::exchange(m_isOffered, false) ? node() : nullptr;
    const QRect own = element ? Utils::NRectToQRect(element->GetGeometry()) : m_committed;
    if (own == m_committed)
        return;
    m_committed = own;
    m_host.setGeometry(m_committed);
    placeGrabbers(QRectF());
    place(QRectF());
}

bool ElementEditor::takeBackMove()
{
    m_isMoving = false;
    if (m_host.geometry().toRect() == m_committed)
        return false;
    m_host.setGeometry(m_committed);
    placeGrabbers(QRectF());
    place(QRectF());
    return true;
}

QUndoCommand *ElementEditor::movableChange(QUndoCommand *parent, bool movable, bool push) const
{
    auto command = std::make_unique<Utils::CommandGroup>(QString(), parent);
    if (!node())
        return command.release();
    auto *change = new Utils::ChangePropertyCommand(m_link, Nodes::BasicWidget::Prop::Movable,
                                                    movable, command.get());
    command->setText(change->text());
    if (!push)
        (void)change->setPropertyCommand(); // a refusal is logged by the command
    return command.release();
}

} // namespace Widgets
