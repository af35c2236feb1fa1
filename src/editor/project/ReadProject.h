#pragma once

#include "nodes/project/FileStamp.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/values/Result.h"

#include <QString>

#include <memory>

namespace Nodes {
class LoadProgress;
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// A project as it was read from its file, before it is the open one. Any thread.
struct ReadProject
{
    ReadProject();
    ~ReadProject();
    ReadProject(ReadProject &&) noexcept;
    ReadProject &operator=(ReadProject &&) noexcept;

    /// Reads also what a newer program wrote, for looking at. What is read and the stamp are of the
    /// same moment, whoever else writes the file meanwhile.
    /// Cancelled by `progress`, which may be null, leaves nothing read.
    [[nodiscard]] Nodes::Result read(const QString &file, Nodes::LoadProgress *progress = nullptr);

    std::unique_ptr<Nodes::NodesCollection> project; ///< null unless it was read
    Nodes::LoadReport report;
    Nodes::FileStamp stamp;
    QString readOnlyReason; ///< Russian; "" when it may be edited
};

} // namespace Editor
