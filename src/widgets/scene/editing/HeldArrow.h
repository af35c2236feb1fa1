#pragma once

#include "utils/undo/Interaction.h"

class QKeyEvent;

namespace Widgets {

/// Tells a held arrow key from one that is pressed several times. An X server repeats a held key as
/// releases and presses of one time, and Qt does not always mark them as repeated. GUI thread.
class HeldArrow
{
public:
    void press(const QKeyEvent &event);
    void release(const QKeyEvent &event);
    /// The steps of one held arrow are one entry of the undo stack.
    const Utils::Interaction &interaction() const { return m_interaction; }

private:
    int m_key = 0;                ///< the one released last
    unsigned long m_released = 0; ///< ms; 0: not known
    Utils::Interaction m_interaction;
};

} // namespace Widgets
