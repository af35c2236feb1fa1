#include "nodes/archive/store/codec/SampleCodec.h"

#include "nodes/archive/store/codec/ColumnReader.h"
#include "nodes/archive/store/codec/ColumnWriter.h"

#include <algorithm>
#include <unordered_map>

namespace Nodes {

namespace {

constexpr std::uint64_t hasQualities = 1;
constexpr std::uint64_t hasKinds = 2;
constexpr std::uint64_t hasTexts = 4;

constexpr std::uint8_t highestQuality = std::uint8_t(Quality::Stale);
constexpr std::uint8_t highestKind = std::uint8_t(SampleKind::Text);

template <class Value> std::vector<std::uint8_t> asBytes(const std::vector<Value> &values)
{
    std::vector<std::uint8_t> bytes(values.size());
    std::transform(values.begin(), values.end(), bytes.begin(),
                   [](Value value) { return std::uint8_t(value); });
    return bytes;
}

template <class Value>
bool fromBytes(const std::vector<std::uint8_t> &bytes, std::uint8_t highest,
               std::vector<Value> &values)
{
    values.resize(bytes.size());
    std::transform(bytes.begin(), bytes.end(), values.begin(),
                   [](std::uint8_t byte) { return Value(byte); });
    return std::all_of(bytes.begin(), bytes.end(), [&](auto byte) { return byte <= highest; });
}

std::uint64_t flagsOf(const SampleRun &run)
{
    const bool isGood = std::all_of(run.qualities.begin(), run.qualities.end(),
                                    [](Quality quality) { return quality == Quality::Good; });
    const bool isNumbers = std::all_of(run.kinds.begin(), run.kinds.end(),
                                       [](SampleKind kind) { return kind == SampleKind::Number; });
    return (isGood ? 0 : hasQualities) | (isNumbers ? 0 : hasKinds) |
           (run.texts.empty() ? 0 : hasTexts);
}

/// Each text once, then which one each text sample has.
void putTexts(const SampleRun &run, ColumnWriter &into)
{
    std::unordered_map<std::string_view, std::int64_t> places;
    std::vector<std::string_view> distinct;
    std::vector<std::int64_t> chosen;
    for (std::size_t i = 0; i < run.Size(); ++i) {
        if (run.KindAt(i) != SampleKind::Text)
            continue;
        const auto [place, isNew] = places.emplace(run.texts[i], std::int64_t(distinct.size()));
        if (isNew)
            distinct.push_back(run.texts[i]);
        chosen.push_back(place->second);
    }
    into.PutVarint(distinct.size());
    for (const std::string_view text : distinct)
        into.PutBytes(text);
    into.PutIntegers(chosen, 0);
}

bool getTexts(ColumnReader &from, SampleRun &run)
{
    const std::uint64_t count = from.GetVarint();
    std::vector<std::string_view> distinct;
    for (std::uint64_t i = 0; i < count && from.IsSound(); ++i)
        distinct.push_back(from.GetBytes());
    std::vector<std::int64_t> chosen;
    from.GetIntegers(std::size_t(std::count(run.kinds.begin(), run.kinds.end(), SampleKind::Text)),
                     0, chosen);
    run.texts.resize(run.Size());
    std::size_t next = 0;
    for (std::size_t i = 0; i < run.kinds.size(); ++i) {
        if (run.kinds[i] != SampleKind::Text)
            continue;
        const auto place = static_cast<std::uint64_t>(chosen[next++]);
        if (place >= distinct.size())
            return false;
        run.texts[i] = std::string(distinct[place]);
    }
    return true;
}

} // namespace

void SampleCodec::Put(const SampleRun &run, Timestamp base, ColumnWriter &into)
{
    const std::uint64_t flags = flagsOf(run);
    into.PutVarint(run.Size());
    into.PutVarint(flags);
    into.PutIntegers(run.times, 2, base);
    into.PutNumbers(run.numbers);
    if (flags & hasQualities)
        into.PutRepeats(asBytes(run.qualities));
    if (flags & hasKinds)
        into.PutRepeats(asBytes(run.kinds));
    if (flags & hasTexts)
        putTexts(run, into);
}

bool SampleCodec::Get(ColumnReader &from, Timestamp base, SampleRun &run)
{
    run.kinds.clear(); // the other columns keep their memory
    run.texts.clear();
    const std::uint64_t count = from.GetVarint();
    const std::uint64_t flags = from.GetVarint();
    if (!from.IsSound() || count > MostSamples || flags > (hasQualities | hasKinds | hasTexts)) {
        run.Clear();
        return false;
    }
    from.GetIntegers(count, 2, run.times, base);
    from.GetNumbers(count, run.numbers);
    run.qualities.assign(count, Quality::Good);
    bool isSound = true;
    std::vector<std::uint8_t> bytes;
    if (flags & hasQualities) {
        from.GetRepeats(count, bytes);
        isSound = fromBytes(bytes, highestQuality, run.qualities);
    }
    if (flags & hasKinds) {
        from.GetRepeats(count, bytes);
        isSound = fromBytes(bytes, highestKind, run.kinds) && isSound;
    }
    if (flags & hasTexts)
        isSound = getTexts(from, run) && isSound;
    return isSound && from.IsSound();
}

} // namespace Nodes
