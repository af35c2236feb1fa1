#pragma once

#include "widgets/context/UnheardActions.h"

namespace Widgets {

/// Where a preview to look at sends what is tried on it: nowhere. Refuses writes without a message
/// and keeps the log and the journal clear. GUI thread.
class PreviewActions : public UnheardActions
{
public:
    void push(const Nodes::NodeLinks &actions, const ActionTrigger &trigger) override;
    Nodes::Result write(const Nodes::BasicWidget &element,
                        const std::function<Nodes::Result()> &write) override;
    void warn(const QString &text) override;
    void journalOnce(const Nodes::ConfigNode &node, const std::string &text) override;
};

} // namespace Widgets
