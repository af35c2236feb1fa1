#pragma once

#include "nodes/values/Result.h"

#include <QString>

#include <memory>

class QLockFile;
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

    /// Creates and locks the directory. StorageError when it cannot be written, Refused while
    /// another process holds it: the detail says which.
    [[nodiscard]] Nodes::Result open(const QString &path);
    /// Opens a fresh directory that is removed with this object.
    [[nodiscard]] Nodes::Result openTemporary();

    const QString &path() const { return m_path; }

private:
    QString m_path;
    std::unique_ptr<QTemporaryDir> m_temporary;
    std::unique_ptr<QLockFile> m_lock;
};

/// `name` with everything that is neither letter, digit, '-' nor '_' replaced by '_'.
QString fileNameFrom(const QString &name);

} // namespace Station
