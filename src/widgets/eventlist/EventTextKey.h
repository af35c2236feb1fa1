#pragma once

#include "widgets/WidgetsExport.h"

#include <string>
#include <string_view>

namespace Widgets {

/// What a text is found and sorted by: a byte for each usual character in the order of signs,
/// digits, Latin and Russian letters, capitals like small ones; six for any other, behind those.
/// Comparing bytes compares texts, and a part of a text has a key that is a part of its key. No
/// byte is 0. Takes UTF-8, broken too. Any thread.
WIDGETS_EXPORT std::string EventTextKey(std::string_view text);
/// The same at the end of `key`.
WIDGETS_EXPORT void AppendEventTextKey(std::string_view text, std::string &key);

} // namespace Widgets
