#include "widgets/eventlist/EventRowFilter.h"

#include "widgets/eventlist/EventTextKey.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr int bits = 32;

unsigned maskOf(const std::vector<int> &codes)
{
    unsigned mask = codes.empty() ? ~0u : 0;
    for (const int code : codes)
        mask |= code >= 0 && code < bits ? 1u << code : 0;
    return mask;
}

bool hasBit(unsigned mask, int code)
{
    return mask == ~0u || (code < bits && (mask >> code & 1u) != 0);
}

} // namespace

bool EventRowFilter::operator==(const EventRowFilter &other) const
{
    return text == other.text && levels == other.levels && types == other.types &&
           users == other.users;
}

EventRowTest::EventRowTest(const EventRowFilter &filter, const EventPool &pool)
    : m_pool(&pool),
      m_part(EventTextKey(filter.text.toStdString())),
      m_levels(maskOf(filter.levels)),
      m_types(maskOf(filter.types))
{
    if (!m_part.empty())
        m_containing = pool.texts.containing(filter.text.toStdString());
    for (const QString &user : filter.users)
        m_users.push_back(user.toStdString());
    if (m_users.empty())
        return;
    m_isUser.resize(pool.texts.count());
    for (EventTexts::Number text = 0; text < pool.texts.count(); ++text)
        m_isUser[text] =
            std::find(m_users.begin(), m_users.end(), pool.texts.view(text)) != m_users.end();
}

bool EventRowTest::contains(EventTexts::Number text) const
{
    return text < m_containing.size() ? m_containing[text] != 0
                                      : m_pool->texts.hasKeyPart(text, m_part);
}

bool EventRowTest::isUserWanted(EventTexts::Number user) const
{
    return user < m_isUser.size() ? m_isUser[user] != 0
                                  : std::find(m_users.begin(), m_users.end(),
                                              m_pool->texts.view(user)) != m_users.end();
}

bool EventRowTest::operator()(const WidgetEventItem &item) const
{
    if (!hasBit(m_levels, item.level()) || !hasBit(m_types, item.type()))
        return false;
    if (!m_users.empty() && !isUserWanted(item.user()))
        return false;
    return m_part.empty() || contains(item.text()) || contains(item.source().name) ||
           contains(item.user()) || contains(item.oldValue()) || contains(item.newValue());
}

} // namespace Widgets
