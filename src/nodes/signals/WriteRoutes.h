#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Result.h"

#include <memory>
#include <vector>

namespace Nodes {

class BasicSignal;
class WriteRoute;

/// Routes of the signals of a project by station. Signals of the local station, and those outside
/// of all stations, are written here: to their driver. Those of another station need a route that
/// somebody has set for it. GUI thread.
class NODES_EXPORT WriteRoutes
{
public:
    WriteRoutes();
    ~WriteRoutes();
    WriteRoutes(const WriteRoutes &) = delete;
    WriteRoutes &operator=(const WriteRoutes &) = delete;

    /// Replaces the route to that station. It is not owned: when it ends there is none again.
    void SetRoute(const NodeLink &station, std::weak_ptr<WriteRoute> route);

    /// Route of the signal as the services of its project have it; the local one where nothing runs
    /// the project. NotAvailable when its station has none.
    [[nodiscard]] static Result Find(const BasicSignal &signal, std::shared_ptr<WriteRoute> &route);

private:
    class Local;
    struct Remote
    {
        NodeLink station;
        std::weak_ptr<WriteRoute> route;
    };

    std::vector<Remote> m_remote;
};

} // namespace Nodes
