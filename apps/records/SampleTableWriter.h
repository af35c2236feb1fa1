#pragma once

#include "nodes/archive/store/ArchiveBucket.h"
#include "nodes/archive/store/SampleRun.h"

#include <cstddef>

namespace Records {

class OutputFile;

/// Writes tables of samples, or of aggregates, as SampleTableReader reads the first.
class SampleTableWriter
{
public:
    explicit SampleTableWriter(OutputFile &output) : m_output(output) {}

    void writeHeader();
    void write(unsigned long signal, const Nodes::SampleRun &run, std::size_t index);
    void writeBucketHeader();
    /// Numbers are empty where there are none.
    void write(unsigned long signal, const Nodes::ArchiveBucket &bucket);

private:
    OutputFile &m_output;
};

} // namespace Records
