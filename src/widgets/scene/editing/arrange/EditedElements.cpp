#include "widgets/scene/editing/arrange/EditedElements.h"

#include <algorithm>

namespace Widgets {

int EditedElements::keyIndex() const
{
    if (elements.empty())
        return -1;
    const auto found = std::find(elements.begin(), elements.end(), key);
    return found == elements.end() ? 0 : static_cast<int>(found - elements.begin());
}

} // namespace Widgets
