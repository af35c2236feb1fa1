#pragma once

#include "nodes/values/Result.h"

#include <string>

namespace Host {

/// Holds a directory for one process. The kernel keeps the lock for as long as the process lives
/// and drops it however that ends; what the lock file says only tells people who holds it. Where
/// the file cannot be made (a disk that is full or read only) the directory itself is locked, and
/// it always is beside the file, so that both ways see each other.
class ProcessLock
{
public:
    ProcessLock() = default;
    /// Empties the file, which stays: removing it could take it from under whoever waits for it.
    ~ProcessLock();
    ProcessLock(const ProcessLock &) = delete;
    ProcessLock &operator=(const ProcessLock &) = delete;

    /// Refused while another process holds the directory, naming it as far as the file tells;
    /// StorageError when it cannot be opened or its file system knows no locks. Lets go of what was
    /// held before.
    [[nodiscard]] Nodes::Result take(const std::string &directory);
    void release();

    /// Whether the path taken still leads to the directory that is held: it does not after the
    /// directory was removed or replaced, or its file system taken away. Asks the disk.
    bool isStillThere() const;

private:
    void signFile() const;

    std::string m_path;
    int m_directory = -1;
    int m_file = -1;
};

} // namespace Host
