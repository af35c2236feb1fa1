#pragma once

class QWidget;

namespace Editor {

/// Shows the dock that the panel stands in, in front of those it shares a place with.
void raiseDock(QWidget &panel);

} // namespace Editor
