#include "widgets/context/PreviewActions.h"

namespace Widgets {

void PreviewActions::push(const Nodes::NodeLinks &, const ActionTrigger &) {}

Nodes::Result PreviewActions::write(const Nodes::BasicWidget &,
                                    const std::function<Nodes::Result()> &)
{
    return Nodes::Result::Refused;
}

void PreviewActions::warn(const QString &) {}

void PreviewActions::journalOnce(const Nodes::ConfigNode &, const std::string &) {}

} // namespace Widgets
