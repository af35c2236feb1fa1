#pragma once

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <vector>

namespace Nodes {

/// Subscribers of something published very often: a signal with the connections of
/// boost::signals2 and a publishing path several times shorter. Slots run on the publishing
/// thread; one that was disconnected while it ran may still be running. Safe on any thread.
template <class Argument> class SlotList
{
public:
    using Slot = std::function<void(Argument)>;

    SlotList() = default;
    SlotList(const SlotList &) = delete;
    SlotList &operator=(const SlotList &) = delete;

    boost::signals2::connection connect(Slot slot)
    {
        auto entry = std::make_shared<Entry>();
        entry->slot = std::move(slot);
        m_list->add(entry);
        // A connection drops its slot when it ends, and with the slot the mark.
        return m_registry.connect([mark = std::make_shared<Mark>(m_list, entry)] {});
    }

    void operator()(Argument argument) const
    {
        const std::shared_ptr<const Entries> entries = m_list->snapshot();
        for (const auto &entry : *entries) {
            if (entry->isOpen.load(std::memory_order_acquire))
                entry->slot(argument);
        }
    }

private:
    struct Entry
    {
        Slot slot;
        std::atomic<bool> isOpen{true};
    };
    using Entries = std::vector<std::shared_ptr<Entry>>;

    class List
    {
    public:
        std::shared_ptr<const Entries> snapshot() const
        {
            const std::lock_guard lock(m_mutex);
            return m_entries;
        }
        void add(const std::shared_ptr<Entry> &entry)
        {
            std::shared_ptr<const Entries> old; // destroyed after the lock: slots own things
            const std::lock_guard lock(m_mutex);
            old = rebuild(entry);
        }
        void close(Entry &entry)
        {
            std::shared_ptr<const Entries> old;
            const std::lock_guard lock(m_mutex);
            entry.isOpen.store(false, std::memory_order_release);
            if (++m_closed * 2 > m_entries->size())
                old = rebuild(nullptr);
        }

    private:
        std::shared_ptr<const Entries> rebuild(const std::shared_ptr<Entry> &added)
        {
            auto fresh = std::make_shared<Entries>();
            fresh->reserve(m_entries->size() - m_closed + 1);
            std::copy_if(m_entries->begin(), m_entries->end(), std::back_inserter(*fresh),
                         [](const auto &entry) { return entry->isOpen.load(); });
            if (added)
                fresh->push_back(added);
            m_closed = 0;
            std::shared_ptr<const Entries> result = std::move(m_entries);
            m_entries = std::move(fresh);
            return result;
        }

        mutable std::mutex m_mutex;
        std::shared_ptr<const Entries> m_entries = std::make_shared<Entries>(); // guarded
        std::size_t m_closed = 0; // guarded; entries that wait for the next rebuild
    };

    struct Mark
    {
        Mark(std::shared_ptr<List> l, std::shared_ptr<Entry> e)
            : list(std::move(l)), entry(std::move(e))
        {
        }
        ~Mark() { list->close(*entry); }
        std::shared_ptr<List> list;
        std::shared_ptr<Entry> entry;
    };

    std::shared_ptr<List> m_list = std::make_shared<List>();
    boost::signals2::signal<void()> m_registry;
};

} // namespace Nodes
