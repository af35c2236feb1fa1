#include "nodes/visual/elements/widgetMovingImage.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo widgetMovingImage::Kind()
{
    return KindBuilder::For<widgetMovingImage>("movingImage", "Moving picture",
                                               "Движущийся рисунок")
        .Inherit<widgetImage>();
}

} // namespace Nodes
