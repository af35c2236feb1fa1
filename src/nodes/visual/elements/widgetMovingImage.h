#pragma once

#include "nodes/visual/elements/widgetImage.h"

namespace Nodes {

/// A picture that wanders over the element's area: shows from afar that the screen is alive.
class NODES_EXPORT widgetMovingImage : public widgetImage
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x1500A);

    static KindInfo Kind();
};

} // namespace Nodes
