#pragma once

#include "nodes/model/links/NodeLink.h"

class QUndoCommand;

namespace Editor {

/// What most stations begin with: whoever is not logged in looks on, an operator runs the plant, an
/// engineer may do everything. GUI thread.
namespace StandardRoles {

/// Adds users below the station as one step: the roles "Гость" (of whoever is not logged in),
/// "Оператор" and "Инженер", and a user for each of the last two, who cannot log in before they are
/// given a password. `made` becomes the subsystem once the command is done.
QUndoCommand *add(const Nodes::NodeLink &station, Nodes::NodeLink &made);

} // namespace StandardRoles

} // namespace Editor
