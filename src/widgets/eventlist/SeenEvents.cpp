#include "widgets/eventlist/SeenEvents.h"

namespace Widgets {

bool SeenEvents::add(unsigned long id)
{
    if (id == 0)
        return true;
    auto bit = m_blocks[id / BlockSize][id % BlockSize];
    const bool isNew = !bit;
    bit = true;
    return isNew;
}

} // namespace Widgets
