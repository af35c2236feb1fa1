#pragma once

#include <Qt>

namespace Widgets {

/// What ISerie::getData tells of a series: the cells of a legend's row. The numbers are not saved.
enum class SerieColumn : int {
    Visible = 0,     ///< Qt::CheckStateRole
    Color = 1,       ///< Qt::DecorationRole and SerieRole::Line: QColor and QPen
    Name = 2,        ///< text of the node, its signal's name without one
    CursorValue = 3, ///< at the cursor, see ISerie::setCursor; "" without a cursor
    Value = 4,       ///< the present one
    Minimum = 5,     ///< over the visible range
    Maximum = 6,
    Unit = 7,
    Axis = 8, ///< title of its Y axis
    Count = 9
};

/// Roles of ISerie::getData beside those of Qt: DisplayRole is what an operator reads,
/// ToolTipRole tells in words what the quality of the value is.
enum SerieRole : int {
    SerieLineRole = Qt::UserRole + 1, ///< QPen of the line, for a sample of it
    SerieNumberRole,  ///< the bare double; NaN where there is none: for sorting and statistics
    SerieQualityRole, ///< int of Nodes::Quality; of texts that are no value: invalid
};

} // namespace Widgets
