#pragma once

#include "nodes/values/Result.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Records {

/// Where a table goes: standard output, or a file, which takes its name only when all of it was
/// written, so that one that was there before is kept until then. What is no plain file (a pipe, a
/// device) is written into as it is. One thread.
class OutputFile
{
public:
    /// "" or "-": standard output.
    explicit OutputFile(std::string path);
    /// Removes what was not finished.
    ~OutputFile();
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    /// StorageError names the file and the cause.
    [[nodiscard]] Nodes::Result open();
    /// Kept until asked for: after a failure nothing more is written.
    void write(std::string_view text);
    bool hasFailed() const { return !m_result; }
    /// Writes what is left and, of a file, waits for the disk. Cancelled: whoever read the output
    /// went away; StorageError: it could not be written. Once.
    [[nodiscard]] Nodes::Result finish();

    /// Finishes a table of so many rows that was made with that result, and tells what failed; a
    /// file that is not complete does not take the place of one that is. True when all was written.
    [[nodiscard]] bool conclude(Nodes::Result made, std::uint64_t rows);

    std::size_t bytesWritten() const { return m_bytesWritten; }

private:
    void flush();
    void fail(int error);
    Nodes::Result putInPlace();

    const std::string m_path;
    std::string m_aside; // "" where it is written in place
    std::string m_buffer;
    int m_descriptor = -1;
    std::size_t m_bytesWritten = 0;
    Nodes::Result m_result;
};

} // namespace Records
