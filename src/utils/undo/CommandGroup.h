#pragma once

#include "utils/undo/NodeCommand.h"

namespace Utils {

/// Several commands as one: those made with it as their parent. All are done or none.
class UTILS_EXPORT CommandGroup : public NodeCommand
{
public:
    explicit CommandGroup(const QString &text, QUndoCommand *parent = nullptr);
    ~CommandGroup() override;

protected:
    Nodes::Result apply() override { return {}; }
    Nodes::Result revert() override { return {}; }
    bool changesNothing() const override { return true; }
    bool isContinuedBy(const NodeCommand &) const override { return true; }
};

} // namespace Utils
