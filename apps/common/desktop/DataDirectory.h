#pragma once

#include "apps/common/process/DirectoryHold.h"

#include "nodes/values/Result.h"

#include <QString>

#include <memory>
#include <string>
#include <vector>

class QTemporaryDir;

namespace Host {

/// Where a station keeps journal and archive. Held by one process at a time, as long as the object
/// lives: two stations writing the same journal would break its chain. GUI thread; only its
/// destructor may wait for the disk, and for a second at most.
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
    bool isTemporary() const { return m_temporary != nullptr; }
    /// Places for records that cannot be written here, of this directory and user alone, the best
    /// one first: below `base`, or else where a restart of the machine keeps them and then where a
    /// full disk does not matter.
    std::vector<std::string> fallbacks(const std::string &base) const;
    /// What is wrong with the directory, in English; "" when nothing is.
    std::string trouble() const { return m_hold.trouble(); }

private:
    QString m_path;
    std::unique_ptr<QTemporaryDir> m_temporary;
    DirectoryHold m_hold; // lets go before the directory is removed
};

/// `name` with everything that is neither letter, digit, '-' nor '_' replaced by '_'.
QString fileNameFrom(const QString &name);

} // namespace Host
