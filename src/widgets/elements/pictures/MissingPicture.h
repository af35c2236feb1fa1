#pragma once

#include "widgets/WidgetsExport.h"

class QPainter;
class QRect;
class QString;

namespace Nodes {
class ConfigNode;
class ResourceLink;
} // namespace Nodes

namespace Widgets {

class SceneContext;

/// What happens to a configured picture that cannot be shown: the author sees a placeholder, the
/// plant's journal one message. GUI thread.
class WIDGETS_EXPORT MissingPicture
{
public:
    /// At run time writes one journal message a picture and process, through the first node that
    /// wanted it; nothing in other work modes.
    static void report(const SceneContext &context, const Nodes::ConfigNode &node,
                       const Nodes::ResourceLink &picture);
    /// A crossed frame with a caption in place of the picture, in every work mode. The painter
    /// stays as it was.
    static void drawPlaceholder(QPainter &painter, const QRect &rect, const QString &caption);
    /// In the editor draws a crossed frame with the picture's file name; nothing at run time. The
    /// painter stays as it was.
    static void draw(const SceneContext &context, QPainter &painter, const QRect &rect,
                     const Nodes::ResourceLink &picture);
};

} // namespace Widgets
