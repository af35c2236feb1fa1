#include "nodes/signals/WriteRoutes.h"

#include "nodes/model/services/ModelServices.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/WriteRoute.h"

#include <algorithm>
#include <utility>

namespace Nodes {

/// To the source of the signal in this process.
class WriteRoutes::Local : public WriteRoute
{
public:
    Result Write(BasicSignal &signal, const SignalValue &value) override
    {
        return signal.DoWrite(value);
    }
};

WriteRoutes::WriteRoutes() = default;
WriteRoutes::~WriteRoutes() = default;

void WriteRoutes::SetRoute(const NodeLink &station, std::weak_ptr<WriteRoute> route)
{
    const auto isOld = [&station](const Remote &remote) {
        return remote.station == station || remote.route.expired();
    };
    m_remote.erase(std::remove_if(m_remote.begin(), m_remote.end(), isOld), m_remote.end());
    m_remote.push_back({station, std::move(route)});
}

Result WriteRoutes::Find(const BasicSignal &signal, std::shared_ptr<WriteRoute> &route)
{
    static const std::shared_ptr<WriteRoute> local = std::make_shared<Local>();
    route = local;
    const WriteRoutes *routes = signal.GetServices().routes;
    if (!routes || signal.IsLocal())
        return Result();
    const std::vector<ConfigNode *> path = signal.GetPathNodes();
    const auto station = std::find_if(path.rbegin(), path.rend(),
                                      [](const ConfigNode *node) { return node->AsStation(); });
    const NodeLink link(station == path.rend() ? nullptr : *station);
    const auto isMeant = [&link](const Remote &remote) { return remote.station == link; };
    const auto found = std::find_if(routes->m_remote.begin(), routes->m_remote.end(), isMeant);
    route = found == routes->m_remote.end() ? nullptr : found->route.lock();
    return route ? Result()
                 : Result(&signal, Result::NotAvailable,
                          "no route to the station \"" + link.GetLinkName() + "\"");
}

} // namespace Nodes
