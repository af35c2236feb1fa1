#pragma once

#include <QString>

namespace Editor {

class Workspace;

/// Shows what differs from that file to the open project in a document; tells why it cannot be
/// read.
void CompareWithFile(Workspace &workspace, const QString &file);
/// The same with the project as it was saved.
void CompareWithSaved(Workspace &workspace);
/// The same with a file that the user chooses.
void CompareByDialog(Workspace &workspace);

} // namespace Editor
