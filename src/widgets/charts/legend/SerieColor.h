#pragma once

class QColor;

namespace Widgets {

class ISerie;

/// Draws a series in another colour until its node changes; what fills a tube keeps its
/// transparency. GUI thread.
void SetSerieColor(ISerie &serie, const QColor &color);

} // namespace Widgets
