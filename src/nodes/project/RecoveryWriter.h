#pragma once

#include "nodes/NodesExport.h"
#include "nodes/project/RecoveryFile.h"

#include <string>

#include <sys/types.h>

namespace Nodes {

class NodesCollection;

/// Keeps unsaved work without making its editor wait: a forked copy of the process has the tree as
/// it is at that moment, writes it and ends. Making the copy takes some milliseconds even for the
/// largest projects, as the kernel copies pages only when they change. When the editor is killed
/// meanwhile, the copy finishes all the same. One thread.
class NODES_EXPORT RecoveryWriter
{
public:
    RecoveryWriter() = default;
    /// Ends a write that is under way; the file before it stays.
    ~RecoveryWriter();
    RecoveryWriter(const RecoveryWriter &) = delete;
    RecoveryWriter &operator=(const RecoveryWriter &) = delete;

    /// NotAvailable while a write is under way or when the system has no room for a copy.
    [[nodiscard]] Result Start(const NodesCollection &project, const RecoveryInfo &info);
    bool IsRunning() const { return m_child > 0; }
    /// Becomes readable when the write has ended; -1 while none is under way.
    int GetDescriptor() const { return m_pipe; }
    /// Waits for the end; how it went.
    [[nodiscard]] Result Finish();

private:
    [[noreturn]] static void write(const NodesCollection &project, const RecoveryInfo &info,
                                   int pipe);

    std::string m_file;
    pid_t m_child = -1;
    int m_pipe = -1;
};

} // namespace Nodes
