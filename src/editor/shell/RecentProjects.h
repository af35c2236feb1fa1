#pragma once

#include <QStringList>

namespace Editor {

/// Directories of the projects opened before, kept between runs of the program. Nobody looks
/// whether they are still there: a drive that is away now may be back tomorrow, and one that does
/// not answer must not hold the window. GUI thread.
namespace RecentProjects {

/// The latest first.
QStringList all();
/// Puts it before the others.
void remember(const QString &directory);
void forget(const QString &directory);

} // namespace RecentProjects

} // namespace Editor
