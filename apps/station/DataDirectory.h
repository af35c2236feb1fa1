#pragma once

#include "apps/station/ProcessLock.h"

#include "nodes/values/Result.h"

#include <QString>

#include <memory>

class QTemporaryDir;

namespace Station {

/// Where a station keeps journal and archive. Held by one process at a time, as long as the object
/// lives: two stations writing the same journal would break its chain.
class DataDirectory
{
public:
    DataDirectory();
    ~DataDirectory();

    /// Directory of a project in the user's data directory.
    static QString defaultPath(const QString &projectName);

    /// Creates and locks the directory. StorageError when there is none to be had, Refused while
    /// another process holds it: the detail says which. One that cannot be written is no failure:
    /// the station shows the plant all the same, and its records are kept elsewhere meanwhile.
    [[nodiscard]] Nodes::Result open(const QString &path);
    /// Opens a fresh directory that is removed with this object.
    [[nodiscard]] Nodes::Result openTemporary();

    const QString &path() const { return m_path; }

private:
    QString m_path;
    std::unique_ptr<QTemporaryDir> m_temporary;
    ProcessLock m_lock;
};

/// `name` with everything that is neither letter, digit, '-' nor '_' replaced by '_'.
QString fileNameFrom(const QString &name);

} // namespace Station
