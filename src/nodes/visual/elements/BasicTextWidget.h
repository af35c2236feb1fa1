#pragma once

#include "nodes/visual/elements/TextProperties.h"

namespace Nodes {

/// An element that shows text on a background and in a frame.
class NODES_EXPORT BasicTextWidget : public TextProperties<BasicFramedWidget>
{
protected:
    BasicTextWidget() = default;
    BasicTextWidget(NColor background, int borderWidth, enAlignmentHorizontal horizontal)
        : TextProperties(horizontal, background, borderWidth)
    {
    }

    static void Describe(KindBuilder &builder);
    /// Adds text and frame only, for kinds with an order of their own.
    static void DescribeFramedText(KindBuilder &builder);
    friend class KindBuilder;
};

} // namespace Nodes
