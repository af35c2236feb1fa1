#include "nodes/model/FreeName.h"

#include <charconv>

namespace Nodes {

namespace {

/// The number that ends a name beginning with `wanted` and a space; -1 for any other name, also
/// one with the number in another writing.
int numberOf(std::string_view name, const std::string &wanted)
{
    const std::size_t head = wanted.size() + 1;
    if (name.size() <= head || name[head] < '1' || name[head] > '9' || name[head - 1] != ' ' ||
        name.compare(0, wanted.size(), wanted) != 0)
        return -1;
    int number = -1;
    const char *end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + head, end, number);
    return stop == end && error == std::errc() ? number : -1;
}

} // namespace

std::string FreeName(const std::vector<std::string_view> &taken, const std::string &wanted,
                     int first)
{
    // Of so many numbers one more than there are names, at least one is free.
    std::vector<bool> isTaken(taken.size() + 1, false);
    bool isWantedTaken = false;
    for (const std::string_view name : taken) {
        isWantedTaken = isWantedTaken || name == wanted;
        const int number = numberOf(name, wanted);
        if (number >= first && std::size_t(number - first) < isTaken.size())
            isTaken[std::size_t(number - first)] = true;
    }
    if (!isWantedTaken)
        return wanted;
    int number = first;
    while (isTaken[std::size_t(number - first)])
        ++number;
    return wanted + " " + std::to_string(number);
}

} // namespace Nodes
