#pragma once

#include "nodes/archive/store/SampleRun.h"

#include <string>

namespace Records {

/// A row of a table of samples. Plain value.
struct SampleRow
{
    Nodes::Timestamp time = 0;
    unsigned long signal = 0;
    Nodes::SampleKind kind = Nodes::SampleKind::Gap;
    double number = 0; ///< of a number; of a logical 0 or 1
    std::string text;  ///< of a text
    Nodes::Quality quality = Nodes::Quality::Bad;

    void addTo(Nodes::SampleRun &run) const;
};

} // namespace Records
