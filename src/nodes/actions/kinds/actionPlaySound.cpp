#include "nodes/actions/kinds/actionPlaySound.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionPlaySound::Kind()
{
    return KindBuilder::For<actionPlaySound>(NodeType::enNodeSubtype(0x10001), "actionPlaySound",
                                             "Play sound", "Звуковой сигнал")
        .Property<&actionPlaySound::m_sound>(16030, "sound", "Sound", "Звук")
        .Hint("wav");
}

} // namespace Nodes
