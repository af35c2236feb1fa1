#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/ResourcePtr.h"

#include <QWidget>

namespace Nodes {
class actionShowMenu;
class BasicMenu;
class BasicMenuItem;
class ConfigNode;
class ResourceLink;
} // namespace Nodes

namespace Widgets {

/// One entry of an operator menu: a large button with an optional picture. Runs its item's actions
/// when the mouse is pressed and released on it or its menu triggers it from the keyboard; the
/// release of the press that opened the menu runs nothing. GUI thread; the
/// nodes outlive it.
class WIDGETS_EXPORT PushButtonMenuItem : public QWidget
{
    Q_OBJECT

public:
    PushButtonMenuItem(Nodes::actionShowMenu *action, Nodes::BasicMenu *menu,
                       QWidget *parent = nullptr);
    PushButtonMenuItem(Nodes::actionShowMenu *action, Nodes::BasicMenuItem *item,
                       QWidget *parent = nullptr);

    /// Size of the entries of the menu node it stands in; 0 by 0 without one.
    QSize sizeHint() const override { return m_size; }
    bool isHovered() const { return m_isHovered; }
    void setHovered(bool isHovered);
    QString text() const;

    /// The menu triggered this entry: runs it, unless the mouse already did.
    void onTriggered();
    /// Forgets what the mouse did before; the menu shows again.
    void reset();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    PushButtonMenuItem(Nodes::actionShowMenu *action, const Nodes::ConfigNode &node,
                       const Nodes::ResourceLink &picture, QWidget *parent);
    void run();
    QRect paintPicture(QPainter &painter, const QRect &area) const;
    QRect paintSubmenuMark(QPainter &painter, const QRect &area) const;

    const Nodes::ConfigNode &m_node;
    Nodes::actionShowMenu *m_action;
    Nodes::BasicMenu *m_menu = nullptr;
    Nodes::BasicMenuItem *m_item = nullptr;
    const Nodes::BasicMenu *m_parentMenu;
    QSize m_size{0, 0};
    Nodes::ResourcePtr m_picture;
    QSize m_pictureSize;
    bool m_isHovered = false;
    bool m_isPressed = false;
    bool m_hasRun = false;
};

} // namespace Widgets
