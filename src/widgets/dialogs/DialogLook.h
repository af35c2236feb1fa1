#pragma once

class QWidget;

namespace Widgets {

/// Looks of the dialogs for touch operation, whatever the desktop's own theme: neutral greys, keys
/// that differ from their background, a latched key inverted so that it is told without colour.
void ApplyDialogLook(QWidget &dialog);

} // namespace Widgets
