#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

#include <string_view>

namespace Widgets {

/// A text from anywhere as one line of a table: control characters and line ends become blanks,
/// marks that would turn the direction of what follows are shown as what they are, long texts are
/// cut with an ellipsis.
WIDGETS_EXPORT QString OneLine(std::string_view utf8);
WIDGETS_EXPORT QString OneLine(const QString &text);
/// The same for a text of many lines: line ends stay, nothing is cut.
WIDGETS_EXPORT QString SafeText(const QString &text);

} // namespace Widgets
