#include "nodes/archive/store/SamplePacket.h"

#include "nodes/archive/store/codec/ColumnReader.h"
#include "nodes/archive/store/codec/ColumnWriter.h"
#include "nodes/archive/store/codec/SampleCodec.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr std::uint64_t generated = 1;
constexpr std::uint64_t sameHome = 2;

void putHome(const RecordHome &home, ColumnWriter &into)
{
    into.PutBytes(home.project);
    into.PutVarint(home.station);
    into.PutBytes(home.stationName);
}

RecordHome getHome(ColumnReader &from)
{
    RecordHome home;
    home.project = from.GetBytes();
    home.station = from.GetVarint();
    home.stationName = from.GetBytes();
    return home;
}

bool isSame(const RecordHome &a, const RecordHome &b)
{
    return a.station == b.station && a.project == b.project && a.stationName == b.stationName;
}

Timestamp baseOf(const std::vector<SamplePacket::Part> &parts)
{
    for (const SamplePacket::Part &part : parts) {
        if (!part.run.IsEmpty())
            return part.run.times.front();
    }
    return 0;
}

} // namespace

std::size_t SamplePacket::Size() const
{
    std::size_t size = 0;
    for (const Part &part : parts)
        size += part.run.Size();
    return size;
}

std::string SamplePacket::Pack() const
{
    const Timestamp base = baseOf(parts);
    const RecordHome unknown;
    const RecordHome *home = &unknown;
    ColumnWriter writer;
    writer.PutSigned(base);
    writer.PutVarint(parts.size());
    for (const Part &part : parts) {
        const RecordSource &source = part.signal.source;
        const bool isSameHome = isSame(source.home, *home);
        writer.PutVarint((part.isGenerated ? generated : 0) | (isSameHome ? sameHome : 0));
        if (!isSameHome)
            putHome(source.home, writer);
        home = &source.home;
        writer.PutVarint(source.node);
        writer.PutBytes(source.name);
        writer.PutBytes(part.signal.unit);
        SampleCodec::Put(part.run, base, writer);
    }
    return writer.Take();
}

std::optional<SamplePacket> SamplePacket::Unpack(std::string_view bytes)
{
    SamplePacket packet;
    ColumnReader reader(bytes);
    const Timestamp base = reader.GetSigned();
    const std::uint64_t count = reader.GetVarint();
    RecordHome home;
    for (std::uint64_t i = 0; i < count && reader.IsSound(); ++i) {
        Part part;
        const std::uint64_t flags = reader.GetVarint();
        part.isGenerated = flags & generated;
        if (!(flags & sameHome))
            home = getHome(reader);
        part.signal.source.home = home;
        part.signal.source.node = reader.GetVarint();
        part.signal.source.name = reader.GetBytes();
        part.signal.unit = reader.GetBytes();
        if (!SampleCodec::Get(reader, base, part.run))
            return std::nullopt;
        packet.parts.push_back(std::move(part));
    }
    if (!reader.IsSound() || !reader.IsAtEnd())
        return std::nullopt;
    return packet;
}

} // namespace Nodes
