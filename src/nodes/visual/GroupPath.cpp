#include "nodes/visual/GroupPath.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr char separator = '/';

} // namespace

bool GroupPath::IsIn(std::string_view outer, std::string_view path)
{
    return outer.empty() || (path.substr(0, outer.size()) == outer &&
                             (path.size() == outer.size() || path[outer.size()] == separator));
}

std::string GroupPath::Rest(std::string_view outer, std::string_view path)
{
    if (outer.empty())
        return std::string(path);
    return std::string(path.substr(std::min(path.size(), outer.size() + 1)));
}

std::string GroupPath::Step(std::string_view outer, std::string_view path)
{
    if (!IsIn(outer, path))
        return {};
    const std::string rest = Rest(outer, path);
    const std::string name = rest.substr(0, rest.find(separator));
    return name.empty() ? std::string() : Join(outer, name);
}

std::string GroupPath::Outside(std::string_view group)
{
    const std::size_t end = group.rfind(separator);
    return std::string(group.substr(0, end == std::string_view::npos ? 0 : end));
}

std::string GroupPath::Name(std::string_view group)
{
    return std::string(group.substr(group.rfind(separator) + 1));
}

std::string GroupPath::Join(std::string_view outer, std::string_view inner)
{
    std::string joined(outer);
    if (!outer.empty() && !inner.empty())
        joined += separator;
    return joined.append(inner);
}

} // namespace Nodes
