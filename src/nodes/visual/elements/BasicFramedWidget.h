#pragma once

#include "nodes/values/NColor.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/SharedProperties.h"

namespace Nodes {

/// An element with a background and a frame of its own.
class NODES_EXPORT BasicFramedWidget : public BasicWidget
{
public:
    struct Prop : BasicWidget::Prop, FrameProp
    {
    };

    NColor GetBackgroundColor() const { return m_backgroundColor; }
    NColor GetBorderColor() const { return m_borderColor; }
    /// Pixels; 0 draws no frame.
    int GetBorderWidth() const { return m_borderWidth; }

protected:
    /// What a fresh node looks like is the kind's choice; by default there is nothing to see.
    BasicFramedWidget() = default;
    BasicFramedWidget(NColor background, int borderWidth)
        : m_backgroundColor(background), m_borderWidth(borderWidth)
    {
    }

    /// Adds the frame's properties only, for kinds with an order of their own.
    static void DescribeFrame(KindBuilder &builder);
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    NColor m_backgroundColor{0, 0, 0, 0};
    NColor m_borderColor{120, 126, 132};
    int m_borderWidth = 0;
};

} // namespace Nodes
