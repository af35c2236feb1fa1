#pragma once

namespace Editor {

/// What is being typed into a field or a cell and is not yet a step of the history, because a key
/// or a button of the tool bar leaves the focus where it is. GUI thread.
namespace OpenEdit {

/// Whether the focus is in a field that takes text.
bool isPossible();
/// Takes the typed over, as leaving the field would; a field that stays keeps the focus. What does
/// not fit is told by the field itself.
void take();

} // namespace OpenEdit

} // namespace Editor
