#pragma once

#include "widgets/WidgetsExport.h"

#include <QJsonObject>
#include <QString>

#include <array>
#include <optional>

namespace Widgets {

struct AlarmRow;

/// Which alarms a list shows. Without any choice: all.
struct WIDGETS_EXPORT AlarmFilter
{
    enum State { Waiting = 0, Active = 1, Returned = 2 };
    static constexpr int PriorityCount = 4;
    static constexpr int StateCount = 3;

    /// By priority, 1 first: false leaves it out.
    std::array<bool, PriorityCount> priorities{true, true, true, true};
    /// By State. Waiting: to be acknowledged, whether its condition is still there or not; Active:
    /// acknowledged, and there; Returned: acknowledged, and gone. An alarm is of one of them.
    std::array<bool, StateCount> states{true, true, true};
    /// "": those that have none.
    std::optional<QString> area;
    /// In text, area or source, without regard to case.
    QString text;

    bool isEmpty() const { return *this == AlarmFilter(); }
    bool accepts(const AlarmRow &row) const;

    QJsonObject toJson() const;
    /// What does not read as a choice is none.
    static AlarmFilter fromJson(const QJsonObject &kept);

    bool operator==(const AlarmFilter &other) const;
    bool operator!=(const AlarmFilter &other) const { return !(*this == other); }

    static State stateOf(const AlarmRow &row);
};

} // namespace Widgets
