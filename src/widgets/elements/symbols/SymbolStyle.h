#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/elements/SymbolLook.h"

#include <QColor>
#include <QString>

class QByteArray;

namespace Widgets {

/// Colours and strokes of one look of a symbol. What is invalid stays as it is drawn in the file.
///
/// Parts of the picture are told by class or id, of the part or of a group around it: `body` has
/// surface and outline, `fill` a surface, `line` an outline, `sign` is what stands on the body,
/// `level` is filled from below. `when-off`, `when-on`, `when-moving`, `when-fault`, `when-unknown`
/// and `when-plain` are drawn in these looks only.
struct WIDGETS_EXPORT SymbolStyle
{
    Nodes::SymbolLook look = Nodes::SymbolLook::Plain;
    QColor body;
    QColor half; ///< of the other half of the body; invalid for one surface
    QColor line;
    QColor sign;
    QColor level;          ///< invalid for an empty one
    bool isDashed = false; ///< outline

    /// What a symbol stands on: on a dark one light and dark change places, so that what runs is
    /// filled against it and bare lines are seen.
    enum class Surface { Light, Dark };

    /// The look of every project; `body` and `line` are put in where they are valid, but a fault
    /// and what is not known look the same everywhere.
    static SymbolStyle of(Nodes::SymbolLook look, const QColor &body, const QColor &line,
                          Surface surface = Surface::Light);

    /// The picture, which passed the check, in this style. Part `level` gets the id LevelId.
    QByteArray apply(const QByteArray &svg) const;
    /// Equal for equal styles.
    QString key() const;

    static constexpr const char *LevelId = "symbol-level";
    static const QColor FaultColor;
};

} // namespace Widgets
