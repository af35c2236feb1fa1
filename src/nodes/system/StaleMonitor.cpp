#include "nodes/system/StaleMonitor.h"

#include "nodes/values/Clock.h"
#include "nodes/values/ValueCell.h"

#include <algorithm>
#include <queue>

namespace Nodes {

namespace {

constexpr Timestamp shortestTick = 100000; // bundles cells whose ages end close together

} // namespace

class StaleMonitor::Schedule
{
public:
    void Add(const Entry &entry, Timestamp now)
    {
        const Timestamp age = Timestamp(entry.staleAfter) * 1000;
        m_checks.push({now + age, age, entry.cell});
    }
    bool IsEmpty() const { return m_checks.empty(); }
    Timestamp Work()
    {
        const Timestamp now = Clock::Current().Steady();
        while (m_checks.top().due <= now) {
            Check check = m_checks.top();
            m_checks.pop();
            check.due = look(check, now);
            m_checks.push(std::move(check));
        }
        return std::max(m_checks.top().due, now + shortestTick);
    }

private:
    struct Check
    {
        Timestamp due;
        Timestamp age;
        std::shared_ptr<ValueCell> cell;

        bool operator<(const Check &other) const { return due > other.due; } // earliest on top
    };

    /// Expires the value when it is too old; steady time of the next look.
    static Timestamp look(const Check &check, Timestamp now)
    {
        const Timestamp published = check.cell->LastPublished();
        if (published + check.age > now)
            return published + check.age;
        check.cell->Expire(published);
        return now + check.age;
    }

    std::priority_queue<Check> m_checks;
};

StaleMonitor::StaleMonitor() = default;

StaleMonitor::~StaleMonitor()
{
    Stop();
}

void StaleMonitor::Start(const std::vector<Entry> &entries)
{
    Stop();
    m_schedule = std::make_unique<Schedule>();
    const Timestamp now = Clock::Current().Steady();
    for (const Entry &entry : entries) {
        if (entry.cell && entry.staleAfter > 0)
            m_schedule->Add(entry, now);
    }
    if (!m_schedule->IsEmpty())
        m_thread.Start([this] { return m_schedule->Work(); });
}

void StaleMonitor::Stop()
{
    m_thread.Stop();
    m_schedule.reset();
}

} // namespace Nodes
