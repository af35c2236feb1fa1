#pragma once

#include "nodes/project/signals/DelimitedText.h"

class QString;
class QWidget;

namespace Editor {

class Workspace;

/// A table that the user takes along as a CSV file for spreadsheets. GUI thread.
class TableFile
{
public:
    /// UTF-8 with a mark, separated by semicolons; a file that was there before is replaced when
    /// all of the new one is written. The error is Russian, "" for success.
    static QString write(const QString &path, const Nodes::TextTable &table);
    /// Asks for the file and tells what has become of it. `rows`: how many are told of.
    static void save(Workspace &workspace, QWidget *parent, const QString &title, int rows,
                     const Nodes::TextTable &table);
};

} // namespace Editor
