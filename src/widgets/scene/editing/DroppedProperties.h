#pragma once

#include "widgets/WidgetsExport.h"

#include <QHash>
#include <QString>

class QMimeData;

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

/// What a palette tells of the element that it drags, beside the element's kind: keys of
/// properties and their texts, as in project files.
class WIDGETS_EXPORT DroppedProperties
{
public:
    using Texts = QHash<QString, QString>;
    static constexpr const char *Format = "application/x-operatorstation-symbol";

    static void put(const Texts &texts, QMimeData &data);
    /// Empty for a drag that tells none.
    static Texts of(const QMimeData &data);
    /// Sets those that the node has and takes, and its name by the key "name"; the others stay as
    /// they are. For a node that is not in the tree yet.
    static void apply(const Texts &texts, Nodes::ConfigNode &node);
};

} // namespace Widgets
