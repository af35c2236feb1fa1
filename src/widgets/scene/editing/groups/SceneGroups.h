#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/groups/GroupScope.h"

#include "nodes/model/links/NodeLink.h"

#include <QHash>
#include <QList>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QVector>

namespace Widgets {

class ProxyWidget;
class SceneSelection;

/// Groups in an edited scene: what is picked by the mouse or by keys is picked with all of its
/// group, until that is entered. What is selected otherwise stays as it is. GUI thread.
class WIDGETS_EXPORT SceneGroups
{
public:
    /// Between a group and its frame, scene pixels.
    static constexpr double margin = 4;

    /// It outlives this.
    explicit SceneGroups(SceneSelection &selection);
    ~SceneGroups();

    /// The group that was entered, as far as its layer exists.
    GroupScope scope() const;
    /// The element came into the selection, or went out of it, by a press: its group follows.
    void follow(ProxyWidget &host);
    /// A rubber band took elements: the groups that it met are taken as a whole.
    void complete();
    /// Goes into the group that the element stands in, by one level, and selects what it stands in
    /// there. Nothing happens where it is in no further one.
    void enter(ProxyWidget &host);
    /// Goes out of the group that was entered, by one level, and selects it; false in none.
    bool leave();
    /// No group is entered any more.
    void forget();
    /// Of the elements at that place: the topmost selected one alone, out of its group; else the
    /// one below it (SceneSelection::selectBelow), out of its group too. Null where there is none.
    ProxyWidget *pick(QPointF place);
    /// The next element or group, or the one before; inside of a group that was entered.
    void selectNext(bool isForward);

    /// The selection has not changed for a moment: leaves groups that it is not in, and notes which
    /// groups are selected as a whole.
    void settle();
    /// Whether the element is selected as a part of a group.
    bool isUnited(const ProxyWidget &host) const { return m_united.contains(&host); }
    /// Rectangles of the groups that are selected, then of the one that was entered, scene pixels.
    QVector<QRectF> frames() const;
    /// Whether the selection is one group and nothing else.
    bool isOneGroup() const;

private:
    QList<ProxyWidget *> mates(const ProxyWidget &host) const;
    QList<ProxyWidget *> membersOf(const Nodes::ConfigNode &layer, const std::string &group) const;
    void comeOut(const ProxyWidget &host);
    void selectWith(ProxyWidget &host, bool isAlone);

    SceneSelection &m_selection;
    Nodes::NodeLink m_layer;
    std::string m_group;
    QHash<const ProxyWidget *, int> m_united; ///< which of the groups
    QVector<QPointer<ProxyWidget>> m_entered; ///< all that is in it
    int m_groups = 0;                         ///< selected
};

} // namespace Widgets
