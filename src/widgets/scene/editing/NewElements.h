#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/DroppedProperties.h"

#include "nodes/model/NodeType.h"

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

class QMenu;

namespace Nodes {
class ConfigNode;
}

namespace Utils {
class IUndo;
}

namespace Widgets {

/// How new elements come into a scene: the menu of the kinds that a layer takes, and the step that
/// adds one. GUI thread.
class WIDGETS_EXPORT NewElements : public QObject
{
    Q_OBJECT

public:
    explicit NewElements(Utils::IUndo &undo);
    ~NewElements() override;

    /// Null before it was filled for the first time.
    QMenu *menu() const { return m_menu.get(); }
    /// Offers what that node takes. A node that takes nothing leaves the menu as it is.
    void fillMenu(const Nodes::ConfigNode &parent);

    /// New element below `parent`, its corner or its centre at the point, with those properties;
    /// false, and told the operator, when there is none. Null: there is no layer.
    /// `landing` may put it elsewhere than at the rectangle that it is given, by its corner.
    using Landing = std::function<QPoint(const QRect &box)>;
    bool add(const Nodes::NodeType &type, Nodes::ConfigNode *parent, QPointF point, bool isCentre,
             const DroppedProperties::Texts &properties = {}, const Landing &landing = {});
    /// What `add` would make it, pixels; invalid for what is no element.
    static QSize sizeOf(const Nodes::NodeType &type, const DroppedProperties::Texts &properties);
    /// Of kinds dragged out of the element panel.
    static QString typesFormat() { return QStringLiteral("application/nodetype"); }

signals:
    void menuFilled(QMenu *menu);
    void chosen(const Nodes::NodeType &type);

private:
    void fillGroup(const std::vector<Nodes::NodeType> &types);

    Utils::IUndo &m_undo;
    std::unique_ptr<QMenu> m_menu;
};

} // namespace Widgets
