#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

namespace Nodes {

/// Makes stores of one kind by their location: "scheme:rest", or a path. A host that brings a store
/// of its own adds it before anything is opened. GUI thread.
template <class Store, class... Facts> class StoreTable
{
public:
    /// Gets the whole location, and what else a store has to know.
    using Maker =
        std::function<std::unique_ptr<Store>(const std::string &location, const Facts &...)>;

    /// `scheme`: small letters, at least two; "" for paths. Replaces an earlier one.
    void Add(const std::string &scheme, Maker maker) { m_makers[scheme] = std::move(maker); }
    /// InvalidArgument for an empty location and one that nobody knows how to reach.
    [[nodiscard]] Result Make(const std::string &location, const Facts &...facts,
                              std::unique_ptr<Store> &store) const
    {
        const auto maker = location.empty() ? m_makers.end() : m_makers.find(schemeOf(location));
        if (maker == m_makers.end())
            return Result(Result::InvalidArgument,
                          "no kind of store is known for the location \"" + location + "\"");
        store = maker->second(location, facts...);
        return Result();
    }

private:
    static std::string schemeOf(const std::string &location)
    {
        const std::size_t length = location.find_first_not_of("abcdefghijklmnopqrstuvwxyz");
        const bool isScheme = length != std::string::npos && length > 1 && location[length] == ':';
        return isScheme ? location.substr(0, length) : std::string();
    }

    std::map<std::string, Maker> m_makers;
};

} // namespace Nodes
