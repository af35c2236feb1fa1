#pragma once

#include <QCollatorSortKey>

#include <string>

namespace Widgets {

/// Sort keys of texts that many alarms share, made once each. GUI thread.
class SortKeys
{
public:
    /// Stays where it is while the program runs: equal texts have the same key.
    static const QCollatorSortKey &of(const std::string &text);
    /// Below, at or above 0 as one text stands before, beside or after the other.
    static int compare(const std::string &left, const std::string &right);
};

} // namespace Widgets
