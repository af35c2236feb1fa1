#include "widgets/actions/running/TimerLists.h"

#include "nodes/timers/operationTimer.h"

#include <utility>

namespace Widgets {

std::shared_ptr<const void> TimerLists::begin(const Nodes::operationTimer &timer)
{
    List &list = m_lists[timer.GetId()];
    if (list.waiting.expired()) {
        const auto begun = std::make_shared<char>();
        list.waiting = begun;
        return begun;
    }
    if (!std::exchange(list.isTold, true))
        timer.StoreMessage(Nodes::LevelWarning,
                           "Таймер пропускает срабатывания: его прошлый список действий ещё ждёт "
                           "выполнения",
                           timer.GetNodeLink());
    return nullptr;
}

} // namespace Widgets
