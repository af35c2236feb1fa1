#include "nodes/journal/JournalRow.h"

#include <msgpack.hpp>
#include <sodium.h>

#include <atomic>
#include <tuple>

namespace Nodes {

namespace {

constexpr std::size_t chainBytes = 32;
constexpr std::size_t recordBytes = crypto_generichash_BYTES_MIN;

using Fields =
    std::tuple<std::uint64_t, std::int64_t, int, int, std::string, std::string, std::uint64_t,
               std::string, std::string, std::string, int, int, std::uint64_t>;

Fields toFields(const JournalRow &row)
{
    const BasicEvent &e = row.event;
    return {row.key,
            e.time,
            e.level,
            e.type,
            e.text,
            e.source,
            e.sourceNode.GetNodeId(),
            e.user,
            e.oldValue,
            e.newValue,
            int(e.alarmState),
            e.priority,
            e.occurrence};
}

JournalRow fromFields(Fields fields)
{
    JournalRow row;
    BasicEvent &e = row.event;
    int level = 0;
    int type = 0;
    int state = 0;
    std::uint64_t node = 0;
    std::tie(row.key, e.time, level, type, e.text, e.source, node, e.user, e.oldValue, e.newValue,
             state, e.priority, e.occurrence) = std::move(fields);
    e.level = EventLevel(level);
    e.type = EventType(type);
    e.alarmState = AlarmState(state);
    if (node != 0)
        e.sourceNode = NodeLink(static_cast<unsigned long>(node));
    return row;
}

std::uint64_t nextKey()
{
    static std::atomic<std::uint64_t> last{[] {
        std::uint64_t start = 0;
        if (sodium_init() >= 0)
            randombytes_buf(&start, sizeof start);
        return start;
    }()};
    return ++last;
}

class Hasher
{
public:
    explicit Hasher(std::size_t size) : m_size(size)
    {
        crypto_generichash_init(&m_state, nullptr, 0, size);
    }
    void Add(std::string_view bytes)
    {
        crypto_generichash_update(&m_state, reinterpret_cast<const unsigned char *>(bytes.data()),
                                  bytes.size());
    }
    std::string Finish()
    {
        std::string hash(m_size, '\0');
        crypto_generichash_final(&m_state, reinterpret_cast<unsigned char *>(hash.data()), m_size);
        return hash;
    }

private:
    std::size_t m_size;
    crypto_generichash_state m_state;
};

} // namespace

JournalRow MakeJournalRow(BasicEvent event)
{
    return {nextKey(), std::move(event)};
}

std::string PackRow(const JournalRow &row)
{
    msgpack::sbuffer buffer;
    msgpack::pack(buffer, toFields(row));
    return {buffer.data(), buffer.size()};
}

std::optional<JournalRow> UnpackRow(std::string_view bytes)
{
    try {
        const msgpack::object_handle handle = msgpack::unpack(bytes.data(), bytes.size());
        if (handle->type != msgpack::type::ARRAY ||
            handle->via.array.size != std::tuple_size_v<Fields>)
            return std::nullopt;
        return fromFields(handle->as<Fields>());
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

std::string ChainHash(const std::string &previous, std::uint64_t id, std::string_view packed)
{
    Hasher hasher(chainBytes);
    hasher.Add(previous);
    hasher.Add(std::to_string(id));
    hasher.Add(packed);
    return hasher.Finish();
}

std::string FirstHash()
{
    return std::string(chainBytes, '\0');
}

std::string RecordHash(std::string_view packed)
{
    Hasher hasher(recordBytes);
    hasher.Add(packed);
    return hasher.Finish();
}

} // namespace Nodes
