#include "widgets/context/OwedActions.h"

namespace Widgets {

OwedActions::~OwedActions() = default;

} // namespace Widgets
