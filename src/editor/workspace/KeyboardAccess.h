#pragma once

class QAbstractItemView;
class QLineEdit;
class QString;
class QWidget;

namespace Editor {

/// What makes a window usable without a mouse and with a screen reader. GUI thread.
namespace KeyboardAccess {

/// Tab goes through what the window's layouts hold, in their order, not in the order in which it
/// was made. Called when all of it is there; what is in no layout keeps its place.
void followLayouts(QWidget &window);
/// A line that filters or finds: what it does is written in it while it is empty, and is its name.
void makeSearchLine(QLineEdit &line, const QString &text);
/// "Select all" is the table's while it has the focus, whatever menu has that key.
void keepAllRowsKey(QAbstractItemView &table);

} // namespace KeyboardAccess

} // namespace Editor
