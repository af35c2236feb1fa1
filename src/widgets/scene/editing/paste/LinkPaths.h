#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>
#include <string>

namespace Widgets {

/// Where the links of copied nodes lead that lead to others than the copied ones: by id and path,
/// so that another project can find nodes of the same place. GUI thread.
class WIDGETS_EXPORT LinkPaths
{
public:
    /// Format of the clipboard that carries it, beside the text.
    static QString mimeFormat() { return QStringLiteral("application/x-operatorstation-links"); }

    struct Target
    {
        std::string path; ///< "" when it led nowhere already
        std::string kind; ///< key of its kind
    };

    LinkPaths() = default;
    LinkPaths(const Nodes::NodesCollection &project, const Nodes::NodeLinks &copied);

    QByteArray toBytes() const;
    /// Of bytes that may come from anywhere; none when they do not read.
    static std::optional<LinkPaths> fromBytes(const QByteArray &bytes);

    /// Whether they were copied from this very project since it was opened: its ids then mean what
    /// they meant.
    bool isFrom(const Nodes::NodesCollection &project) const;
    /// Null for an id that no link had.
    const Target *find(unsigned long id) const;
    unsigned long highestId() const;

private:
    QString m_source; ///< the process and the project opened in it
    std::map<unsigned long, Target> m_targets;
};

} // namespace Widgets
