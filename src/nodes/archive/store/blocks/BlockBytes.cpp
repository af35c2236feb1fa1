#include "nodes/archive/store/blocks/BlockBytes.h"

#include "nodes/archive/store/codec/ColumnReader.h"
#include "nodes/archive/store/codec/ColumnWriter.h"
#include "nodes/archive/store/codec/Compression.h"
#include "nodes/archive/store/codec/Pyramid.h"
#include "nodes/archive/store/codec/SampleCodec.h"

namespace Nodes::BlockBytes {

namespace {

constexpr std::uint64_t samplesMark = 0x51; // with the version of the format, 1
constexpr std::uint64_t pyramidMark = 0x61;
constexpr std::uint64_t logMark = 0x71;

std::uint64_t asNumber(std::int64_t signal)
{
    return static_cast<std::uint64_t>(signal);
}

} // namespace

std::string OfSamples(std::int64_t signal, const SampleRun &run)
{
    ColumnWriter writer;
    writer.PutVarint(samplesMark);
    writer.PutVarint(asNumber(signal));
    SampleCodec::Put(run, 0, writer);
    return Compression::Pack(writer.Bytes());
}

bool ReadSamples(const std::string &bytes, std::int64_t signal, SampleRun &run)
{
    thread_local std::string unpacked;
    if (!Compression::Unpack(bytes, unpacked))
        return false;
    ColumnReader reader(unpacked);
    return reader.GetVarint() == samplesMark && reader.GetVarint() == asNumber(signal) &&
           SampleCodec::Get(reader, 0, run) && reader.IsAtEnd();
}

std::string OfPyramid(std::int64_t signal, int height, const Pyramid &pyramid)
{
    ColumnWriter writer;
    writer.PutVarint(pyramidMark);
    writer.PutVarint(asNumber(signal));
    writer.PutVarint(std::uint64_t(height));
    pyramid.Put(writer);
    return Compression::Pack(writer.Bytes());
}

bool ReadPyramid(const std::string &bytes, std::int64_t signal, int height, Pyramid &pyramid)
{
    thread_local std::string unpacked;
    if (!Compression::Unpack(bytes, unpacked))
        return false;
    ColumnReader reader(unpacked);
    return reader.GetVarint() == pyramidMark && reader.GetVarint() == asNumber(signal) &&
           reader.GetVarint() == std::uint64_t(height) && pyramid.Get(reader) && reader.IsAtEnd();
}

std::string OfLog(const std::vector<Part> &parts)
{
    const Timestamp base = parts.empty() ? 0 : parts.front().second->times.front();
    ColumnWriter writer;
    writer.PutVarint(logMark);
    writer.PutSigned(base);
    writer.PutVarint(parts.size());
    for (const auto &[signal, run] : parts) {
        ColumnWriter part;
        SampleCodec::Put(*run, base, part);
        writer.PutVarint(asNumber(signal));
        writer.PutBytes(part.Bytes());
    }
    return Compression::Pack(writer.Bytes());
}

bool ReadLog(const std::string &bytes, LogRow &row)
{
    row.parts.clear();
    if (!Compression::Unpack(bytes, row.unpacked))
        return false;
    ColumnReader reader(row.unpacked);
    if (reader.GetVarint() != logMark)
        return false;
    row.base = reader.GetSigned();
    const std::uint64_t count = reader.GetVarint();
    for (std::uint64_t i = 0; i < count && reader.IsSound(); ++i) {
        const auto signal = static_cast<std::int64_t>(reader.GetVarint());
        row.parts.emplace_back(signal, reader.GetBytes());
    }
    if (!reader.IsSound() || !reader.IsAtEnd())
        row.parts.clear();
    return reader.IsSound() && reader.IsAtEnd();
}

bool ReadLogPart(std::string_view part, Timestamp base, SampleRun &run)
{
    ColumnReader reader(part);
    return SampleCodec::Get(reader, base, run) && reader.IsAtEnd();
}

} // namespace Nodes::BlockBytes
