#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NSize.h"
#include "nodes/visual/SharedProperties.h"

namespace Nodes {

class KindBuilder;

/// A picture made of layers that a composed window shows; several windows may share one.
class NODES_EXPORT BasicComposition : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeComposition;
    struct Prop : SizeProp
    {
        static constexpr PropertyId<bool> Keep{19001, "keep"};
    };

    static KindInfo Kind();

    NSize GetSize() const { return {m_width, m_height}; }
    /// Its scene is kept, stopped, while another composition is shown, so that coming back is
    /// immediate.
    bool isKept() const { return m_isKept; }
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    int m_width = 1280;
    int m_height = 800;
    bool m_isKept = false;
};

} // namespace Nodes
