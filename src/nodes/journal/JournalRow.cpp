#include "nodes/journal/JournalRow.h"

#include "nodes/journal/JournalLink.h"
#include "nodes/storage/Digest.h"
#include "nodes/values/Clock.h"

#include <msgpack.hpp>

#include <tuple>

namespace Nodes {

namespace {

constexpr std::size_t chainBytes = JournalLink::HashBytes;
constexpr std::size_t likelyBytes = 320; // of a packed entry

using BareFields =
    std::tuple<std::uint64_t, std::int64_t, int, int, std::string, std::string, std::uint64_t,
               std::string, std::string, std::string, int, int, std::uint64_t>;
using Fields = std::tuple<std::int64_t, int, int, std::string, std::string, std::uint64_t,
                          std::string, std::uint64_t, std::string, std::string, std::string,
                          std::string, int, int, std::uint64_t>;

/// What msgpack writes to.
struct Bytes
{
    std::string text;
    void write(const char *from, std::size_t size) { text.append(from, size); }
};

template <class... Values> std::string pack(const Values &...values)
{
    Bytes bytes;
    bytes.text.reserve(likelyBytes);
    msgpack::packer<Bytes> packer(bytes);
    packer.pack_array(sizeof...(values));
    (packer.pack(values), ...);
    return std::move(bytes.text);
}

std::string packBare(const JournalRow &row)
{
    const BasicEvent &e = row.event;
    return pack(row.key, e.time, int(e.level), int(e.type), e.text, row.source.name,
                std::uint64_t(row.source.node), e.user, e.oldValue, e.newValue, int(e.alarmState),
                e.priority, std::uint64_t(e.occurrence));
}

template <class Tuple> std::optional<Tuple> unpack(std::string_view bytes)
{
    try {
        const auto isReferring = [](msgpack::type::object_type, std::size_t, void *) {
            return true;
        };
        const msgpack::object_handle handle =
            msgpack::unpack(bytes.data(), bytes.size(), isReferring);
        if (handle->type != msgpack::type::ARRAY ||
            handle->via.array.size != std::tuple_size_v<Tuple>)
            return std::nullopt;
        return handle->as<Tuple>();
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

/// Codes as they stand in the bytes.
void setCodes(BasicEvent &event, int level, int type, int state, std::uint64_t occurrence)
{
    event.level = EventLevel(level);
    event.type = EventType(type);
    event.alarmState = AlarmState(state);
    event.occurrence = static_cast<unsigned long>(occurrence);
}

std::optional<JournalRow> fromBare(std::string_view bytes)
{
    std::optional<BareFields> fields = unpack<BareFields>(bytes);
    if (!fields)
        return std::nullopt;
    JournalRow row;
    row.version = JournalRow::WithBareNode;
    BasicEvent &e = row.event;
    int level = 0;
    int type = 0;
    int state = 0;
    std::uint64_t occurrence = 0;
    std::tie(row.key, e.time, level, type, e.text, row.source.name, row.source.node, e.user,
             e.oldValue, e.newValue, state, e.priority, occurrence) = std::move(*fields);
    setCodes(e, level, type, state, occurrence);
    return row;
}

std::optional<Record> fromUnnamed(std::string_view bytes)
{
    const std::optional<JournalRow> row = fromBare(bytes);
    if (!row)
        return std::nullopt;
    return Record{row->key, JournalRow::WithBareNode, std::string(bytes)};
}

} // namespace

JournalRow JournalRow::Unreadable(const Record &record)
{
    JournalRow row;
    row.key = record.key;
    row.event.time = Clock::Current().Now();
    row.event.level = LevelCritical;
    row.event.type = TypeSystemState;
    row.event.text = "Запись журнала не читается, байт: " + std::to_string(record.bytes.size());
    row.source.name = "Журнал";
    return row;
}

RecordFormat JournalFormat()
{
    return {"journal", "event", JournalRow::WithSource, &fromUnnamed};
}

std::string PackEvent(const BasicEvent &e, const RecordSource &source)
{
    return pack(e.time, int(e.level), int(e.type), e.text, source.home.project,
                std::uint64_t(source.home.station), source.home.stationName,
                std::uint64_t(source.node), source.name, e.user, e.oldValue, e.newValue,
                int(e.alarmState), e.priority, std::uint64_t(e.occurrence));
}

std::optional<JournalRow> UnpackRow(const Record &record)
{
    if (record.version == JournalRow::WithBareNode)
        return fromBare(record.bytes);
    std::optional<Fields> fields = unpack<Fields>(record.bytes);
    if (!fields || record.version != JournalRow::WithSource)
        return std::nullopt;
    JournalRow row;
    row.key = record.key;
    BasicEvent &e = row.event;
    RecordSource &source = row.source;
    int level = 0;
    int type = 0;
    int state = 0;
    std::uint64_t occurrence = 0;
    std::tie(e.time, level, type, e.text, source.home.project, source.home.station,
             source.home.stationName, source.node, source.name, e.user, e.oldValue, e.newValue,
             state, e.priority, occurrence) = std::move(*fields);
    setCodes(e, level, type, state, occurrence);
    return row;
}

Record PackRow(const JournalRow &row)
{
    const bool isBare = row.version == JournalRow::WithBareNode;
    return {row.key, row.version, isBare ? packBare(row) : PackEvent(row.event, row.source)};
}

// The bytes of earlier versions hold the key themselves.
std::string ChainHash(const std::string &previous, std::uint64_t number, const Record &record)
{
    Digest digest(chainBytes);
    digest.Add(previous);
    if (record.version == JournalRow::WithBareNode)
        digest.Add(std::to_string(number));
    else
        digest.Add(number).Add(record.key);
    return digest.Add(record.bytes).Finish();
}

std::string FirstHash()
{
    return std::string(chainBytes, '\0');
}

} // namespace Nodes
