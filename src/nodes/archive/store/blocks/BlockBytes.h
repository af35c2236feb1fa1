#pragma once

#include "nodes/archive/store/SampleRun.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Nodes {

struct Pyramid;

/// Content of the rows of an archive: see docs/archive.md, "Blocks". Each names what it belongs to,
/// so that one that came into the wrong row shows.
namespace BlockBytes {

std::string OfSamples(std::int64_t signal, const SampleRun &run);
[[nodiscard]] bool ReadSamples(const std::string &bytes, std::int64_t signal, SampleRun &run);

std::string OfPyramid(std::int64_t signal, int height, const Pyramid &pyramid);
[[nodiscard]] bool ReadPyramid(const std::string &bytes, std::int64_t signal, int height,
                               Pyramid &pyramid);

/// A row of the log: samples of several signals, by their numbers.
using Part = std::pair<std::int64_t, const SampleRun *>;
std::string OfLog(const std::vector<Part> &parts);
/// Parts of a row as they stand in it: pointers into what was unpacked.
struct LogRow
{
    std::string unpacked;
    Timestamp base = 0;
    std::vector<std::pair<std::int64_t, std::string_view>> parts; ///< by number of the signal
};
/// False when it is damaged; nothing is known of it then. A row is not moved afterwards.
[[nodiscard]] bool ReadLog(const std::string &bytes, LogRow &row);
[[nodiscard]] bool ReadLogPart(std::string_view part, Timestamp base, SampleRun &run);

} // namespace BlockBytes

} // namespace Nodes
