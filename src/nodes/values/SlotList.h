#pragma once

#include "nodes/values/Connection.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace Nodes {

/// Subscribers of one thing, called in the order they came. There is a list for every kind of
/// notification of every node that is watched, and a window of a thousand elements subscribes to
/// thousands at once: both subscribing and publishing are short. Slots run on the publishing
/// thread, outside of any lock; one that was disconnected while it ran may still be running, and
/// what it holds may stay until the list is next rebuilt. Safe on any thread.
template <class Argument> class SlotList
{
public:
    using Slot = std::function<void(Argument)>;

    SlotList() = default;
    SlotList(const SlotList &) = delete;
    SlotList &operator=(const SlotList &) = delete;

    /// A slot added while the list is being called is called from the next time on.
    Connection Connect(Slot slot)
    {
        const auto entry = std::make_shared<Entry>(m_list, std::move(slot));
        m_list->add(entry);
        return Connection(entry);
    }

    void operator()(Argument argument) const
    {
        const std::shared_ptr<const Entries> entries = m_list->snapshot();
        if (!entries)
            return;
        for (const auto &entry : *entries) {
            if (entry->IsOpen())
                entry->slot(argument);
        }
    }

private:
    class List;

    struct Entry : public BasicSlot
    {
        Entry(const std::shared_ptr<List> &l, Slot s) : list(l), slot(std::move(s)) {}

        const std::weak_ptr<List> list;
        const Slot slot;

    protected:
        void leave() override
        {
            if (const std::shared_ptr<List> keeper = list.lock())
                keeper->countClosed();
        }
    };
    using Entries = std::vector<std::shared_ptr<const Entry>>;

    /// The entries are never changed in place: whoever calls the slots keeps them as they were.
    class List
    {
    public:
        std::shared_ptr<const Entries> snapshot()
        {
            Retired retired;
            const std::lock_guard lock(m_mutex);
            if (!m_added.empty())
                retired = rebuild();
            return m_entries;
        }
        void add(const std::shared_ptr<const Entry> &entry)
        {
            const std::lock_guard lock(m_mutex);
            m_added.push_back(entry);
        }
        void countClosed()
        {
            Retired retired;
            const std::lock_guard lock(m_mutex);
            if (++m_closed * 2 >= m_added.size() + (m_entries ? m_entries->size() : 0))
                retired = rebuild();
        }

    private:
        /// Destroyed outside of the lock: what slots hold may end subscriptions when it goes.
        struct Retired
        {
            std::shared_ptr<const Entries> entries;
            Entries added;
        };

        // A closed entry may go before it is counted, so the count only says when to look.
        Retired rebuild()
        {
            Retired retired{m_entries, std::exchange(m_added, {})};
            auto fresh = std::make_shared<Entries>();
            const auto take = [&fresh](const Entries &entries) {
                std::copy_if(entries.begin(), entries.end(), std::back_inserter(*fresh),
                             [](const auto &entry) { return entry->IsOpen(); });
            };
            fresh->reserve(retired.added.size() + (m_entries ? m_entries->size() : 0));
            if (m_entries)
                take(*m_entries);
            take(retired.added);
            m_closed = 0;
            m_entries = fresh->empty() ? nullptr : std::move(fresh);
            return retired;
        }

        std::mutex m_mutex;
        std::shared_ptr<const Entries> m_entries; // guarded; null while there are none
        Entries m_added;                          // guarded; merged when the list is called
        std::size_t m_closed = 0;                 // guarded; entries that wait for a rebuild
    };

    const std::shared_ptr<List> m_list = std::make_shared<List>();
};

} // namespace Nodes
