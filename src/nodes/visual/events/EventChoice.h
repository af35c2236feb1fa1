#pragma once

#include <string>
#include <vector>

namespace Nodes {

/// Which events a list asks the journal for, beside their time and source; an empty list: any.
struct EventChoice
{
    std::vector<int> levels;        ///< EventLevel
    std::vector<int> types;         ///< EventType
    std::vector<std::string> users; ///< "" for the system itself
    std::string text;               ///< part of the event's text, whatever the case of letters

    bool isEmpty() const
    {
        return levels.empty() && types.empty() && users.empty() && text.empty();
    }
    bool operator==(const EventChoice &other) const
    {
        return levels == other.levels && types == other.types && users == other.users &&
               text == other.text;
    }
    bool operator!=(const EventChoice &other) const { return !(*this == other); }
};

} // namespace Nodes
