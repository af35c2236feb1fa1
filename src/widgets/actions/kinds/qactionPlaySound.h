#pragma once

#include "nodes/actions/kinds/actionPlaySound.h"
#include "widgets/actions/qBasicAction.h"

namespace Widgets {

/// Plays the sound file of its node once. A sound that still plays is cut off. Without the file or
/// an audio device nothing plays; a missing file, and one that is no sound, is journalled once
/// until it is right again.
class qactionPlaySound : public qBasicAction
{
public:
    using Node = Nodes::actionPlaySound;

    using qBasicAction::qBasicAction;
    void Execute() override;
};

} // namespace Widgets
