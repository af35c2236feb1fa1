#include "utils/undo/CommandGroup.h"

namespace Utils {

CommandGroup::CommandGroup(const QString &text, QUndoCommand *parent) : NodeCommand(parent)
{
    setText(text);
}

CommandGroup::~CommandGroup() = default;

} // namespace Utils
