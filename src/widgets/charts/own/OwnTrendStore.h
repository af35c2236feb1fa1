#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"
#include "utils/settings/Configurator.h"

namespace Nodes {
class systemCore;
}

namespace Widgets {

/// The signals of users' own trends, kept over restarts with the data of the station: for each user
/// of each project, and for those who work without one. GUI thread.
class WIDGETS_EXPORT OwnTrendStore : private Utils::Configurator
{
public:
    /// Of whoever is logged in now.
    explicit OwnTrendStore(const Nodes::systemCore &model);

    /// In their order; signals that are gone are left out.
    Nodes::NodeLinks load() const;
    /// StorageError when it could not be kept: the present trend goes on.
    [[nodiscard]] Nodes::Result save(const Nodes::NodeLinks &shown) const;

private:
    const Nodes::systemCore &m_model;
    QString m_owner;
};

} // namespace Widgets
