#pragma once

#include <QSize>

class QAbstractButton;
class QWidget;

namespace Widgets {

/// Looks of the dialogs for touch operation, whatever the desktop's own theme: neutral greys, keys
/// that differ from their background, a latched key inverted so that it is told without colour.
void ApplyDialogLook(QWidget &dialog);

/// Gives a widget's own text a size that is read at arm's length, unless it is larger already.
/// Under a style sheet no widget takes the font of its parent.
void MakeLegible(QWidget &widget);

/// Smallest size of what a finger hits, pixels, and of a button with a word on it.
constexpr int TouchSize = 40;
constexpr QSize TouchButton(96, TouchSize);
/// Gives a button with a legible text that size, and its text room.
void MakeTouchable(QAbstractButton &button);

} // namespace Widgets
