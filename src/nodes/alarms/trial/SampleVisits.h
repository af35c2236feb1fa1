#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/SampleRun.h"
#include "nodes/values/Result.h"
#include "nodes/values/SignalValue.h"

#include <atomic>
#include <functional>

namespace Nodes {

class BasicSignal;
class systemArchiver;

/// Goes over the samples of one signal with `from` <= time <= `to`, oldest first, in portions; the
/// latest one before `from` may come first. False of the visitor ends the visit, as a success.
using SampleVisit = std::function<Result(Timestamp from, Timestamp to,
                                         const std::function<bool(const SampleRun &)> &visitor,
                                         const std::atomic<bool> &isCancelled)>;

/// What the archive holds of the signal, to be visited on any thread, also after the archiver has
/// stopped. NotAvailable while it does not run, AccessDenied when the current user may not view the
/// signal. GUI thread.
NODES_EXPORT Result OpenSamples(const systemArchiver &archiver, const BasicSignal &signal,
                                SampleVisit &visit);

/// The value that a signal had with this sample. What is no value is an error of bad quality.
NODES_EXPORT SignalValue ValueOf(const SampleRun &run, std::size_t index);

} // namespace Nodes
