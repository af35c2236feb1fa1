#pragma once

#include "utils/UtilsExport.h"

#include <QString>

namespace Utils {

/// Text for tooltips, which guess whether a text is markup: names, values and messages come from
/// projects and devices, must be read letter by letter, and must load no files.
UTILS_EXPORT QString PlainTip(const QString &text);
/// Text for menus and buttons, where a single & would become an underline and a key.
UTILS_EXPORT QString PlainCaption(QString text);

} // namespace Utils
