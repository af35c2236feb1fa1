#pragma once

#include "nodes/actions/kinds/actionChangeCompositionTemplate.h"
#include "widgets/actions/kinds/qactionChangeComposition.h"

namespace Widgets {

/// Opens an instance of a template composition in a window of its own, or brings forward one with
/// the same arguments.
class qactionChangeCompositionTemplate : public qactionChangeComposition
{
public:
    using Node = Nodes::actionChangeCompositionTemplate;

    using qactionChangeComposition::qactionChangeComposition;
    void Execute() override;
};

} // namespace Widgets
