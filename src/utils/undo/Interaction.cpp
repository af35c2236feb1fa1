#include "utils/undo/Interaction.h"

namespace Utils {

Interaction Interaction::begin()
{
    Interaction interaction;
    interaction.m_state = std::make_shared<State>();
    return interaction;
}

} // namespace Utils
