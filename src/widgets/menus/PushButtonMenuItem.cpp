#include "widgets/menus/PushButtonMenuItem.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/pictures/MissingPicture.h"

#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/menus/BasicMenu.h"
#include "nodes/menus/BasicMenuItem.h"
#include "utils/convert/ValueConversions.h"

#include <QMouseEvent>
#include <QPainter>

#include <utility>

namespace Widgets {

namespace {

constexpr double disabledOpacity = 0.4;
constexpr int gap = 8; // between picture, text, mark and edge

} // namespace

PushButtonMenuItem::PushButtonMenuItem(Nodes::actionShowMenu *action, const Nodes::ConfigNode &node,
                                       const Nodes::ResourceLink &picture, QWidget *parent)
    : QWidget(parent),
      m_node(node),
      m_action(action),
      m_parentMenu(dynamic_cast<const Nodes::BasicMenu *>(node.GetParent())),
      m_picture(picture.Load())
{
    setMouseTracking(true);
    if (m_parentMenu)
        m_size = QSize(m_parentMenu->GetEntryWidth(), m_parentMenu->GetEntryHeight());
    const QImage *image =
        m_picture ? ImageCachingManager::getInstance().getImage(m_picture) : nullptr;
    if (image)
        m_pictureSize = image->size();
    if (!picture.GetFilePath().empty() && m_pictureSize.isEmpty())
        MissingPicture::report(*SceneContext::process(), node, picture);
}

PushButtonMenuItem::PushButtonMenuItem(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu,
                                       QWidget *parent)
    : PushButtonMenuItem(action, *menu, menu->GetPicture(), parent)
{
    m_menu = menu;
}

PushButtonMenuItem::PushButtonMenuItem(Nodes::actionShowMenu *action, Nodes::BasicMenuItem *item,
                                       QWidget *parent)
    : PushButtonMenuItem(action, *item, item->GetPicture(), parent)
{
    m_item = item;
}

QString PushButtonMenuItem::text() const
{
    return QString::fromStdString(m_node.GetName());
}

void PushButtonMenuItem::setHovered(bool isHovered)
{
    m_isHovered = isHovered;
    update();
}

void PushButtonMenuItem::reset()
{
    m_hasRun = false;
    m_isPressed = false;
    setHovered(false);
}

void PushButtonMenuItem::onTriggered()
{
    if (!std::exchange(m_hasRun, false))
        run();
}

void PushButtonMenuItem::mousePressEvent(QMouseEvent *event)
{
    m_hasRun = false;
    m_isPressed = true;
    QWidget::mousePressEvent(event);
}

// The base class passes the release on to the menu, which closes and triggers the entry.
void PushButtonMenuItem::mouseReleaseEvent(QMouseEvent *event)
{
    if (std::exchange(m_isPressed, false) && m_item && rect().contains(event->pos())) {
        run();
        m_hasRun = true;
    }
    QWidget::mouseReleaseEvent(event);
}

void PushButtonMenuItem::run()
{
    if (m_item)
        SceneContext::process()->actions().trigger(m_item->GetActions(), this,
                                                   mapToGlobal(QPoint(0, height())));
}

void PushButtonMenuItem::paintEvent(QPaintEvent *)
{
    const int border = m_action->GetBorderWidth();
    const QRect box = rect().adjusted(0, 0, -border, -border - 1);
    QPainter painter(this);
    if (!isEnabled())
        painter.setOpacity(disabledOpacity);
    painter.fillRect(box, Utils::NColorToQColor(m_isHovered ? m_action->GetHoverBackgroundColor()
                                                            : m_action->GetBackgroundColor()));
    const QColor textColour = Utils::NColorToQColor(m_action->GetTextColor());
    if (border > 0) {
        painter.setPen(QPen(Utils::NColorToQColor(m_action->GetBorderColor()), border));
        painter.drawRect(box);
    }
    // The chosen entry is told by a bar as well, for those who do not see the shade.
    if (m_isHovered)
        painter.fillRect(QRect(box.topLeft(), QSize(4, box.height())), textColour);
    QRect area = box.adjusted(border, border, -border, -border);
    area = paintPicture(painter, area);
    area.adjust(gap, 0, -gap, 0);
    painter.setPen(textColour);
    area = paintSubmenuMark(painter, area);
    painter.setFont(Utils::NFontToQFont(m_action->GetFont()));
    const QString shown = painter.fontMetrics().elidedText(text(), Qt::ElideRight, area.width());
    painter.drawText(area,
                     int(Utils::NAligmentToQtAligment(m_action->GetHorizontalAlignment(),
                                                      m_action->GetVerticalAlignment())) |
                         Qt::TextSingleLine,
                     shown);
}

// What remains for the text. The square stays empty for an entry without a picture, so that the
// texts of a menu begin at one line.
QRect PushButtonMenuItem::paintPicture(QPainter &painter, const QRect &area) const
{
    if (!m_parentMenu || !m_parentMenu->ShowsPictures())
        return area;
    const int inset = qMin(gap / 2, area.height() / 8);
    const QRect square(area.left() + gap, area.top() + inset, area.height() - 2 * inset,
                       area.height() - 2 * inset);
    QRect fitted(QPoint(), m_pictureSize.scaled(square.size(), Qt::KeepAspectRatio));
    fitted.moveCenter(square.center());
    ImageCachingManager::getInstance().draw(painter, fitted, m_picture);
    return area.adjusted(square.right() + 1 - area.left(), 0, 0, 0);
}

QRect PushButtonMenuItem::paintSubmenuMark(QPainter &painter, const QRect &area) const
{
    if (!m_menu)
        return area;
    const int half = qBound(4, area.height() / 8, 10);
    const QPointF tip(area.right(), area.center().y() + 0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(painter.pen().color());
    painter.setPen(Qt::NoPen);
    const QPointF triangle[] = {tip, tip + QPointF(-1.2 * half, -half),
                                tip + QPointF(-1.2 * half, half)};
    painter.drawConvexPolygon(triangle, 3);
    painter.restore();
    return area.adjusted(0, 0, -2 * half - gap, 0);
}

} // namespace Widgets
