#include "widgets/elements/DirectPainting.h"

namespace Widgets {

DirectPainting::~DirectPainting() = default;

} // namespace Widgets
