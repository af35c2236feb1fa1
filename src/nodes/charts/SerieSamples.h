#pragma once

#include "nodes/values/Connection.h"

#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

class SignalValue;
class ValueCell;

namespace SerieSamples {

using Slot = std::function<void(const std::vector<SignalValue> &)>;

/// Hands every sample that the cell publishes to the slot, the present one first: its source time
/// is the unique one that a history gives it, and an error is a NaN of bad quality, so that it
/// leaves a gap. Called on the publishing threads inside the cell: the slot copies and hands over,
/// and asks no cell.
Connection Connect(const std::shared_ptr<ValueCell> &cell, Slot slot);

} // namespace SerieSamples

} // namespace Nodes
