#pragma once

#include "nodes/NodesExport.h"
#include "nodes/archive/store/SampleRun.h"

#include <string_view>

/// A run of samples as bytes: see docs/archive.md, "Samples".
namespace Nodes {

class ColumnReader;
class ColumnWriter;

namespace SampleCodec {

constexpr std::size_t MostSamples = 1u << 20; ///< in one run

/// Times are written as differences to `base`, which reading has to be told.
void Put(const SampleRun &run, Timestamp base, ColumnWriter &into);
/// False when the bytes are no run.
bool Get(ColumnReader &from, Timestamp base, SampleRun &run);

} // namespace SampleCodec

} // namespace Nodes
