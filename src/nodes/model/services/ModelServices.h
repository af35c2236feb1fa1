#pragma once

namespace Nodes {

class AccessGuard;
class JournalSink;
class StationFinder;
class WriteRoutes;
class systemCore;

/// What the running system does for the nodes of a project. The model knows these interfaces only;
/// a core installs them on the project that it adopts (NodesCollection::SetServices) and outlives
/// it. Each may be missing, and a project that nothing runs has none:
struct ModelServices
{
    systemCore *core = nullptr;        ///< handed on to who asks; the model never looks inside
    AccessGuard *access = nullptr;     ///< without: there are no users, everything is allowed
    JournalSink *journal = nullptr;    ///< without: entries are answered with NotAvailable
    StationFinder *stations = nullptr; ///< without: no station is the local one
    WriteRoutes *routes = nullptr;     ///< without: every signal is written here
};

} // namespace Nodes
