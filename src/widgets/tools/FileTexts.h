#pragma once

#include <QStringList>

namespace Nodes {
class Result;
}

namespace Widgets {

/// What operators read about work with files, in Russian.
namespace FileTexts {

QString megabytes(quint64 bytes);
/// Why it was not done, as the end of a sentence.
QString reasonOf(const Nodes::Result &result);
/// A line each, those beyond the first ten as a number.
QString listOf(const QStringList &names);
/// A path in the folder that neither a file nor one of `taken` has yet: copies never take the place
/// of earlier ones.
QString freePath(const QString &folder, const QString &file, const QStringList &taken);

} // namespace FileTexts

} // namespace Widgets
