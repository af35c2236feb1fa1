#pragma once

#include "widgets/windows/WidgetLink.h"

#include <QJsonObject>

#include <array>

namespace Station {

/// What one open window shows at the moment: how many values of which quality. GUI thread.
class WindowReport
{
public:
    explicit WindowReport(const Widgets::WidgetLink &link);

    /// As the window stands in the status file; `withTexts` adds what each value reads.
    QJsonObject toJson(bool withTexts) const;

    /// Same window showing the same numbers of values.
    bool operator==(const WindowReport &other) const;

private:
    Widgets::WidgetLink m_link;
    int m_bound = 0;
    std::array<int, 4> m_shown{}; // by Nodes::Quality
};

} // namespace Station
