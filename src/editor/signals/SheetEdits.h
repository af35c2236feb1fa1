#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/SheetPlan.h"

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

class QModelIndex;

namespace Nodes {
class ConfigNode;
struct KindInfo;
} // namespace Nodes

namespace Editor {

class SheetModel;
class Workspace;

/// Edits of many cells of a table at once, each one step of the history. What cannot be done is
/// given back, cell by cell. GUI thread.
namespace SheetEdits {

using Refusals = std::vector<Nodes::SheetRefusal>;
using Cells = std::vector<std::pair<int, int>>; ///< rows and columns of the model
/// Columns of the model as they stand side by side on the screen; none: as in the model.
using Columns = std::vector<int>;

/// Carries the plan out, or drops it; false when the project took nothing. Tells how much it was.
bool carryOut(Workspace &workspace, Nodes::SheetPlan &plan, const QString &text);

/// Puts the text of a spreadsheet in: a table with a header by names, wherever the cursor is, else
/// the cells from that one on; a single value into all of `selected`.
Refusals paste(Workspace &workspace, const SheetModel &model, const std::string &text, int row,
               int column, const Cells &selected, Columns order = {});
/// Takes a table with a header over.
Refusals importTable(Workspace &workspace, const SheetModel &model, const Nodes::TextTable &table);
/// Gives the selected cells of each column the value of its uppermost one.
Refusals fillDown(Workspace &workspace, const SheetModel &model, const Cells &selected);
/// Adds a node of that kind for each name. The property of that column is `first` in the first and
/// grows by `step`; -1: it is left alone.
Refusals addNodes(Workspace &workspace, const SheetModel &model,
                  const std::vector<std::string> &names, const Nodes::KindInfo &kind, int column,
                  double first, double step);
/// Gives the signals the alarms that a table of LimitAlarms tells.
Refusals setAlarms(Workspace &workspace, Nodes::ConfigNode &scope, const Nodes::TextTable &table);
/// Gives the nodes new names, all or none: names may pass from one to another.
Refusals rename(Workspace &workspace, const Nodes::NodeLinks &nodes,
                const std::vector<std::string> &names);

/// The selected cells as text for spreadsheets, the smallest rectangle around them.
std::string copy(const SheetModel &model, const Cells &selected, Columns order = {});
/// All rows shown, with a header.
Nodes::TextTable exportTable(const SheetModel &model);

} // namespace SheetEdits

} // namespace Editor
