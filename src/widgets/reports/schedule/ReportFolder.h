#pragma once

#include <QString>
#include <QStringList>

namespace Widgets {

/// Files of reports in a folder. May wait for the disk: not for the GUI thread.
namespace ReportFolder {

struct Place
{
    QString file;  ///< that does not exist; "" after a failure
    QString error; ///< for operators
};

/// Makes the folder and finds a free name in it: "name.pdf", "name (2).pdf", ... Files that are
/// made of a CSV's name count as well. A file that only looks like it is one is left alone.
Place prepare(const QString &folder, const QString &name, const QString &ending);
/// A file of that name in a new folder of its own below the system's temporary one.
Place prepareTemporary(const QString &name, const QString &ending);
/// Removes such a file with its folder.
void removeTemporary(const QString &file);
/// Removes files; those that could not be removed, and are there still.
QStringList remove(const QStringList &files);

} // namespace ReportFolder

} // namespace Widgets
