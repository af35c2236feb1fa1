#pragma once

#include "utils/UtilsExport.h"

#include <QString>

#include <utility>

namespace Utils {

/// The files of a project as its properties name them: relative to its folder, parted by '/', not
/// beyond it and not through symbolic links that lead out. Errors are Russian and say what to do.
class UTILS_EXPORT ResourceFiles
{
public:
    /// What a project takes, bytes.
    static constexpr qint64 MaximumSize = 50 * 1024 * 1024;

    struct Outcome
    {
        QString name{};  ///< as a property names the file; "" when there is an error
        QString error{}; ///< "" for none
        /// The file lies elsewhere and has to be copied into the project first.
        bool isForeign = false;
    };

    /// `directory` of the project.
    explicit ResourceFiles(QString directory) : m_directory(std::move(directory)) {}

    /// What a property would call the file at `path`; isForeign for a good one from elsewhere.
    Outcome find(const QString &path) const;
    /// Copies the file into `folder` of the project. One of the same name and bytes is taken as it
    /// is; beside one of other bytes the copy has a number in its name. Never replaces a file.
    Outcome bringIn(const QString &path, const QString &folder) const;
    /// Folder for files of that sort: pictures, sounds, others.
    static QString folderFor(const QString &path);

private:
    QString m_directory;
};

} // namespace Utils
