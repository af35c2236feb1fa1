#pragma once

class QMenu;

namespace Editor {

/// The letters that menus are worked with by keys: each entry has one that no other entry of its
/// menu has, as long as there are letters. GUI thread.
namespace MenuLetters {

/// Marks them. A letter that an entry has already stays with it, the first entry's where two have
/// the same; then first letters of words are taken, then any.
void assign(QMenu &menu);
/// The same whenever the menu opens: texts may change, entries come and go.
void keep(QMenu &menu);

} // namespace MenuLetters

} // namespace Editor
