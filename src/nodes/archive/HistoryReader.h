#pragma once

namespace Nodes {

/// For whom a history is read.
enum class HistoryReader {
    CurrentUser, ///< who may be forbidden to view a signal
    Station      ///< the station itself, for what it does whoever is logged in: reports it files
};

} // namespace Nodes
