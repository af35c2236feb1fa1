#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/NodesArray.h"

#include <optional>

class QMimeData;

namespace Nodes {
class NodesCollection;
}

namespace Widgets {

struct PasteReport;

/// Templates that copied instances show: another project that lacks them gets them along with the
/// instances. In the clipboard they stand beside its text, in a format of their own. GUI thread.
class WIDGETS_EXPORT CopiedTemplates
{
public:
    /// Elements and templates that are in no tree yet; links among them follow.
    struct Pasted
    {
        Nodes::NodesArray elements;
        Nodes::NodesArray templates; ///< those that the project has none of at their place
    };

    /// Adds nothing when the elements show no template.
    static void put(const Nodes::NodesCollection &project, const Nodes::NodeLinks &elements,
                    QMimeData &data);
    /// Nothing when the clipboard was filled in this project, has no templates, or the project has
    /// all of them: the text then says enough.
    static std::optional<Pasted> take(Nodes::NodesCollection &project, PasteReport &report);
};

} // namespace Widgets
