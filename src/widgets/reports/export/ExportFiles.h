#pragma once

#include <QString>

namespace Widgets {

/// Files of exports. Any thread.
namespace ExportFiles {

/// Told when an operator ended the export.
extern const QString cancelled;

/// An error for operators: which file, why, what to do.
QString notWritten(const QString &file, const QString &reason);
/// Why nothing may be put there, a device or a directory for example; "" when something may.
QString refusal(const QString &file);
/// Puts a written file in the place of another, or leaves that as it is; "" or why.
QString replace(const QString &written, const QString &file);
/// A name as part of a file name.
QString namePart(const QString &name);

} // namespace ExportFiles

} // namespace Widgets
