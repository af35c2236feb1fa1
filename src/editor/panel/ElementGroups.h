#pragma once

#include "nodes/model/NodeType.h"

#include <QString>
#include <QVector>

namespace Editor {

/// Element kinds as the element panel shows them.
struct ElementGroup
{
    QString title; ///< Russian
    QVector<Nodes::NodeType> types;
};

/// All registered kinds of elements: those of a group in its order, kinds that no group names
/// after them as "Прочие". Groups without kinds are left out.
QVector<ElementGroup> ElementGroups();

} // namespace Editor
