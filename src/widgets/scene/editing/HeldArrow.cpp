#include "widgets/scene/editing/HeldArrow.h"

#include <QKeyEvent>

namespace Widgets {

void HeldArrow::press(const QKeyEvent &event)
{
    constexpr unsigned long shortest = 5; // ms between two presses of a hand, and far more
    const bool isRepeated = m_released != 0 && event.key() == m_key &&
                            event.timestamp() >= m_released &&
                            event.timestamp() - m_released < shortest;
    if (!event.isAutoRepeat() && !isRepeated)
        m_interaction = Utils::Interaction::begin();
    m_released = 0;
}

void HeldArrow::release(const QKeyEvent &event)
{
    m_key = event.key();
    m_released = event.timestamp();
}

} // namespace Widgets
