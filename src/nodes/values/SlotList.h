#pragma once

#include "nodes/values/Connection.h"

#include <algorithm>
#include <atomic>
#include <functional>
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
    ~SlotList()
    {
        if (List *list = m_list.load(std::memory_order_acquire))
            list->letGo();
    }
    SlotList(const SlotList &) = delete;
    SlotList &operator=(const SlotList &) = delete;

    /// A slot added while the list is being called is called from the next time on.
    Connection Connect(Slot slot)
    {
        List &list = made();
        const auto entry = std::make_shared<Entry>(list.self(), std::move(slot));
        list.add(entry);
        return Connection(entry);
    }

    void operator()(Argument argument) const
    {
        List *list = m_list.load(std::memory_order_acquire);
        const std::shared_ptr<const Entries> entries = list ? list->snapshot() : nullptr;
        if (!entries)
            return;
        const auto call = [&argument](const Entry &entry) {
            if (entry.IsOpen())
                entry.slot(argument);
        };
        call(*entries->first);
        for (const auto &entry : entries->rest)
            call(*entry);
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
    using EntryPointer = std::shared_ptr<const Entry>;
    /// Never empty. Most lists have one subscriber, who is found without another step.
    struct Entries
    {
        EntryPointer first;
        std::vector<EntryPointer> rest;

        std::size_t size() const { return rest.size() + 1; }
    };

    /// Made for the first subscriber and shared, because slots may outlive it. The entries are
    /// never changed in place: whoever calls the slots keeps them as they were.
    class List
    {
    public:
        static List *Make()
        {
            const auto list = std::make_shared<List>();
            list->m_self = list;
            return list.get();
        }
        const std::shared_ptr<List> &self() const { return m_self; }
        /// Its owner is done with it.
        void letGo() { const auto last = std::move(m_self); }

        std::shared_ptr<const Entries> snapshot()
        {
            Retired retired;
            const std::lock_guard lock(m_mutex);
            if (!m_added.empty())
                retired = rebuild();
            return m_entries;
        }
        void add(const EntryPointer &entry)
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
            std::vector<EntryPointer> added;
        };

        // A closed entry may go before it is counted, so the count only says when to look.
        Retired rebuild()
        {
            Retired retired{m_entries, std::exchange(m_added, {})};
            auto fresh = std::make_shared<Entries>();
            const auto take = [&fresh](const EntryPointer &entry) {
                if (!entry->IsOpen())
                    return;
                if (fresh->first)
                    fresh->rest.push_back(entry);
                else
                    fresh->first = entry;
            };
            fresh->rest.reserve(retired.added.size() + (m_entries ? m_entries->rest.size() : 0));
            if (m_entries) {
                take(m_entries->first);
                std::for_each(m_entries->rest.begin(), m_entries->rest.end(), take);
            }
            std::for_each(retired.added.begin(), retired.added.end(), take);
            m_closed = 0;
            m_entries = fresh->first ? std::move(fresh) : nullptr;
            return retired;
        }

        std::shared_ptr<List> m_self; // the owner's share: the owner has room for a pointer only
        std::mutex m_mutex;
        std::shared_ptr<const Entries> m_entries; // guarded; null while there are none
        std::vector<EntryPointer> m_added;        // guarded; merged when the list is called
        std::size_t m_closed = 0;                 // guarded; entries that wait for a rebuild
    };

    List &made()
    {
        List *list = m_list.load(std::memory_order_acquire);
        if (list)
            return *list;
        List *fresh = List::Make();
        if (m_list.compare_exchange_strong(list, fresh, std::memory_order_acq_rel))
            return *fresh;
        fresh->letGo();
        return *list;
    }

    std::atomic<List *> m_list{nullptr};
};

} // namespace Nodes
