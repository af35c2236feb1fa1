#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/WidgetEventItem.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace Widgets {

/// Which rows of a list are seen. What is empty lets everything through. A value.
struct WIDGETS_EXPORT EventRowFilter
{
    QString text;            ///< part of text, source, user or values, whatever the case of letters
    std::vector<int> levels; ///< EventLevel
    std::vector<int> types;  ///< EventType
    QStringList users;       ///< by exact name, "" for the system itself

    bool isEmpty() const
    {
        return text.isEmpty() && levels.empty() && types.empty() && users.isEmpty();
    }
    bool operator==(const EventRowFilter &other) const;
    bool operator!=(const EventRowFilter &other) const { return !(*this == other); }
};

/// A filter got ready for the texts of one pool, as they are now. Rows that were added since are
/// judged by their texts, which costs more. GUI thread.
class WIDGETS_EXPORT EventRowTest
{
public:
    EventRowTest() = default;
    EventRowTest(const EventRowFilter &filter, const EventPool &pool);

    bool operator()(const WidgetEventItem &item) const;

private:
    bool contains(EventTexts::Number text) const;
    bool isUserWanted(EventTexts::Number user) const;

    const EventPool *m_pool = nullptr;
    std::string m_part; // key
    std::vector<std::string> m_users;
    unsigned m_levels = ~0u; // bits
    unsigned m_types = ~0u;
    std::vector<char> m_containing; // by text
    std::vector<char> m_isUser;     // likewise
};

} // namespace Widgets
