#pragma once

#include "nodes/values/NRect.h"

#include <QColor>
#include <QImage>
#include <QString>

#include <vector>

namespace Nodes {
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// A sign on a picture of a window.
struct PictureMark
{
    Nodes::NRect place; ///< of an element, pixels of its window
    QString sign;       ///< a letter or two: told apart without colour
    QColor color;
    bool isChosen = false;
};

/// Pictures of windows, compositions and templates as they look with nothing running, for looking
/// at beside one another. GUI thread.
namespace WindowPicture {

/// What the node is shown in: itself or the nearest above; null when it is shown nowhere.
const Nodes::ConfigNode *windowOf(const Nodes::ConfigNode *node);
/// The counterpart of a window in the other project: by id, else by path; null when it has none.
const Nodes::ConfigNode *counterpart(const Nodes::ConfigNode &window,
                                     const Nodes::NodesCollection &other);
/// The elements as while they are edited, without the marks of editing; null when nothing can be
/// shown.
QImage render(const Nodes::ConfigNode &window);
/// Draws signs on a part of a window's picture that is shown `scale` times its size.
void mark(QImage &part, const QPoint &corner, double scale, const std::vector<PictureMark> &marks);

} // namespace WindowPicture

} // namespace Editor
