#include "widgets/eventlist/EventTexts.h"

#include "widgets/eventlist/EventTextKey.h"
#include "widgets/eventlist/EventTextOrder.h"
#include "widgets/eventlist/NaturalKey.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace Widgets {

namespace {

constexpr std::size_t blockSize = std::size_t(1) << 20;
constexpr std::size_t firstSlots = 1024;

// At the beginning of a character.
std::string_view cut(std::string_view text, std::size_t length)
{
    if (text.size() <= length)
        return text;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80)
        --length;
    return text.substr(0, length);
}

} // namespace

EventTexts::EventTexts() : m_views(1), m_hashes(1), m_slots(firstSlots) {}

EventTexts::~EventTexts() = default;

QString EventTexts::string(Number number) const
{
    const std::string_view text = view(number);
    return QString::fromUtf8(text.data(), int(text.size()));
}

EventTexts::Number *EventTexts::slotOf(std::string_view text, std::size_t hash)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t place = hash & mask;
    while (const Number number = m_slots[place]) {
        if (m_hashes[number] == std::uint32_t(hash) && view(number) == text)
            break;
        place = (place + 1) & mask;
    }
    return &m_slots[place];
}

void EventTexts::grow()
{
    const std::size_t mask = m_slots.size() * 2 - 1;
    m_slots.assign(mask + 1, 0);
    for (Number number = 1; number < count(); ++number) {
        std::size_t place = m_hashes[number] & mask;
        while (m_slots[place] != 0)
            place = (place + 1) & mask;
        m_slots[place] = number;
    }
}

// What is reserved is never moved: views lead into it.
EventTexts::Block &EventTexts::blockFor(std::size_t text, std::size_t key)
{
    Block *last = m_blocks.empty() ? nullptr : m_blocks.back().get();
    if (!last || last->texts.size() + text > blockSize || last->keys.size() + key > blockSize) {
        last = m_blocks.emplace_back(std::make_unique<Block>()).get();
        last->texts.reserve(blockSize);
        last->keys.reserve(blockSize);
        last->first = count();
    }
    return *last;
}

EventTexts::Number EventTexts::add(std::string_view whole)
{
    if (whole.empty())
        return 0;
    const std::string_view text = cut(whole, LongestText);
    const std::size_t hash = std::uint32_t(std::hash<std::string_view>()(text));
    Number *slot = slotOf(text, hash);
    if (*slot != 0) {
        m_views[*slot].isCut |= text.size() != whole.size();
        return *slot;
    }
    m_key.clear();
    AppendEventTextKey(text, m_key);
    m_key.push_back('\0');
    Block &block = blockFor(text.size(), m_key.size());
    const std::size_t textAt = block.texts.size();
    const std::size_t keyAt = block.keys.size();
    block.texts.append(text);
    block.keys.append(m_key);
    const Number number = count();
    m_views.push_back({std::string_view(block.texts).substr(textAt),
                       std::string_view(block.keys).substr(keyAt, m_key.size() - 1),
                       text.size() != whole.size()});
    m_hashes.push_back(std::uint32_t(hash));
    m_bytes += text.size() + m_key.size() + sizeof(View) + 3 * sizeof(Number);
    *slot = number;
    if (m_views.size() * 2 > m_slots.size())
        grow();
    return number;
}

int EventTexts::compare(Number left, Number right) const
{
    if (left < m_places.size() && right < m_places.size())
        return m_places[left] < m_places[right] ? -1 : m_places[left] > m_places[right] ? 1 : 0;
    return left == right ? 0 : NaturalKey::compare(m_views[left].key, m_views[right].key);
}

const std::vector<EventTexts::Number> &EventTexts::places() const
{
    if (m_places.size() == m_views.size())
        return m_places;
    std::vector<std::string_view> keys;
    keys.reserve(m_views.size());
    for (const View &view : m_views)
        keys.push_back(view.key);
    m_places = EventTextOrder::placesOf(keys);
    return m_places;
}

std::vector<char> EventTexts::containing(std::string_view part) const
{
    const std::string wanted = EventTextKey(part);
    std::vector<char> found(m_views.size(), wanted.empty() ? 1 : 0);
    if (wanted.empty())
        return found;
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        const Block &block = *m_blocks[i];
        const char *at = block.keys.data();
        const char *const end = at + block.keys.size();
        const auto last =
            m_views.begin() + (i + 1 < m_blocks.size() ? m_blocks[i + 1]->first : count());
        auto view = m_views.begin() + block.first;
        while ((at = static_cast<const char *>(
                    memmem(at, std::size_t(end - at), wanted.data(), wanted.size())))) {
            view = std::upper_bound(view, last, at, [](const char *place, const View &other) {
                return place < other.key.data();
            });
            const View &hit = *std::prev(view);
            found[std::size_t(&hit - m_views.data())] = 1;
            at = hit.key.data() + hit.key.size();
        }
    }
    return found;
}

} // namespace Widgets
