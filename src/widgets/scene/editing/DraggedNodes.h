#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodesArray.h"

#include <QStringList>

class QMimeData;

namespace Nodes {
class NodesCollection;
}

namespace Widgets {

/// What is dragged out of the tree of a project.
class WIDGETS_EXPORT DraggedNodes
{
public:
    /// By path, or else by id; those the project has not are left out.
    static Nodes::NodesArray read(const Nodes::NodesCollection &project, const QMimeData &mime);
    /// Whether it comes from there at all.
    static bool isIn(const QMimeData &mime);
    /// The texts of one format, as far as its bytes read.
    static QStringList texts(const QMimeData &mime, const QString &format);
};

} // namespace Widgets
