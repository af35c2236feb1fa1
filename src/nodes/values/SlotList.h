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
/// thread, outside of any lock; one that was disconnected while it ran may still be running. Safe
/// on any thread.
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

    /// Never changed in place: whoever calls the slots keeps the entries as they were.
    class List
    {
    public:
        std::shared_ptr<const Entries> snapshot() const
        {
            const std::lock_guard lock(m_mutex);
            return m_entries;
        }
        void add(const std::shared_ptr<const Entry> &entry)
        {
            std::shared_ptr<const Entries> old; // destroyed after the lock: slots own things
            const std::lock_guard lock(m_mutex);
            old = rebuild(entry);
        }
        void countClosed()
        {
            std::shared_ptr<const Entries> old;
            const std::lock_guard lock(m_mutex);
            if (++m_closed * 2 >= size())
                old = rebuild(nullptr);
        }

    private:
        std::size_t size() const { return m_entries ? m_entries->size() : 0; }

        // A closed entry may go before it is counted, so the count only says when to look.
        std::shared_ptr<const Entries> rebuild(const std::shared_ptr<const Entry> &added)
        {
            auto fresh = std::make_shared<Entries>();
            fresh->reserve(size() + 1);
            if (m_entries)
                std::copy_if(m_entries->begin(), m_entries->end(), std::back_inserter(*fresh),
                             [](const auto &entry) { return entry->IsOpen(); });
            if (added)
                fresh->push_back(added);
            m_closed = 0;
            return std::exchange(m_entries, fresh->empty() ? nullptr : std::move(fresh));
        }

        mutable std::mutex m_mutex;
        std::shared_ptr<const Entries> m_entries; // guarded; null while there are none
        std::size_t m_closed = 0;                 // guarded; entries that wait for a rebuild
    };

    const std::shared_ptr<List> m_list = std::make_shared<List>();
};

} // namespace Nodes
