#pragma once

#include <QPixmap>
#include <QString>

namespace Editor {

/// Small picture of a colour in its text form, on a chequered ground where it is not opaque.
QPixmap colorSwatch(const QString &text, int size = 14);

} // namespace Editor
