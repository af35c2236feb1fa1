#include "nodes/actions/kinds/actionPlaySound.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo actionPlaySound::Kind()
{
    return KindBuilder::For<actionPlaySound>("actionPlaySound", "Play sound", "Звуковой сигнал")
        .Property<&actionPlaySound::m_sound>(Prop::Sound, "Sound", "Звук")
        .Hint("wav");
}

} // namespace Nodes
