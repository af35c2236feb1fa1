#include "nodes/archive/store/codec/ColumnReader.h"

#include "nodes/archive/store/codec/Decimals.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace Nodes {

namespace {

constexpr std::uint8_t asBits = 0xff;

std::uint64_t unzigzag(std::uint64_t word)
{
    return (word >> 1) ^ (0 - (word & 1));
}

/// The width is a constant for the compiler, which makes the inner loop one of a few loads.
template <unsigned Width>
void joinPlanes(const unsigned char *planes, std::size_t count, std::uint64_t *words)
{
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t word = 0;
        for (unsigned plane = 0; plane < Width; ++plane)
            word |= std::uint64_t(planes[plane * count + i]) << (8 * plane);
        words[i] = word;
    }
}

using PlaneJoiner = void (*)(const unsigned char *, std::size_t, std::uint64_t *);
constexpr PlaneJoiner joiners[] = {joinPlanes<0>, joinPlanes<1>, joinPlanes<2>,
                                   joinPlanes<3>, joinPlanes<4>, joinPlanes<5>,
                                   joinPlanes<6>, joinPlanes<7>, joinPlanes<8>};

/// Sums from `begin` on: `words` hold residuals that were zigzagged.
void sum(std::uint64_t *words, std::size_t begin, std::size_t count, unsigned order)
{
    std::uint64_t value = begin > 0 ? words[begin - 1] : 0;
    std::uint64_t step = begin > 1 ? value - words[begin - 2] : 0;
    if (order == 0) {
        for (std::size_t i = begin; i < count; ++i)
            words[i] = unzigzag(words[i]);
    } else if (order == 1) {
        for (std::size_t i = begin; i < count; ++i)
            words[i] = value += unzigzag(words[i]);
    } else {
        for (std::size_t i = begin; i < count; ++i) {
            step += unzigzag(words[i]);
            words[i] = value += step;
        }
    }
}

} // namespace

std::string_view ColumnReader::take(std::size_t count)
{
    if (count > m_bytes.size()) {
        m_isSound = false;
        m_bytes = {};
        return {};
    }
    const std::string_view taken = m_bytes.substr(0, count);
    m_bytes.remove_prefix(count);
    return taken;
}

std::uint8_t ColumnReader::getByte()
{
    const std::string_view byte = take(1);
    return byte.empty() ? 0 : static_cast<std::uint8_t>(byte.front());
}

std::uint64_t ColumnReader::GetVarint()
{
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        const std::uint8_t byte = getByte();
        number |= std::uint64_t(byte & 0x7f) << shift;
        if (byte < 0x80)
            return number;
    }
    m_isSound = false;
    return 0;
}

std::int64_t ColumnReader::GetSigned()
{
    return static_cast<std::int64_t>(unzigzag(GetVarint()));
}

std::string_view ColumnReader::GetBytes()
{
    return take(GetVarint());
}

void ColumnReader::getPlanes(std::size_t count, std::uint64_t *words)
{
    const std::uint8_t width = getByte();
    const std::string_view planes = width <= 8 ? take(width * count) : std::string_view();
    if (width > 8 || planes.size() != width * count) {
        m_isSound = false;
        std::fill_n(words, count, 0);
        return;
    }
    joiners[width](reinterpret_cast<const unsigned char *>(planes.data()), count, words);
}

void ColumnReader::GetIntegers(std::size_t count, unsigned order,
                               std::vector<std::int64_t> &numbers, std::int64_t base)
{
    numbers.resize(count);
    auto *words = reinterpret_cast<std::uint64_t *>(numbers.data());
    const std::size_t begin = std::min<std::size_t>(order, count);
    for (std::size_t i = 0; i < begin; ++i)
        words[i] = static_cast<std::uint64_t>(GetSigned()) +
                   (i > 0 ? words[i - 1] : static_cast<std::uint64_t>(base));
    getPlanes(count - begin, words + begin);
    sum(words, begin, count, order);
}

void ColumnReader::getBits(std::vector<double> &numbers)
{
    std::vector<std::uint64_t> words(numbers.size());
    getPlanes(words.size(), words.data());
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < words.size(); ++i) {
        bits ^= words[i];
        std::memcpy(&numbers[i], &bits, sizeof bits);
    }
}

void ColumnReader::GetNumbers(std::size_t count, std::vector<double> &numbers)
{
    std::vector<std::uint8_t> gaps;
    if (getByte() != 0)
        GetRepeats(count, gaps);
    numbers.resize(count);
    const std::uint8_t places = getByte();
    if (places == asBits) {
        getBits(numbers);
    } else {
        GetIntegers(count, 1, m_scaled);
        const double power = Decimals::Powers[std::min<unsigned>(places, Decimals::MostPlaces)];
        m_isSound = m_isSound && places <= Decimals::MostPlaces;
        for (std::size_t i = 0; i < count; ++i)
            numbers[i] = static_cast<double>(m_scaled[i]) / power;
    }
    for (std::size_t i = 0; i < gaps.size(); ++i) {
        if (gaps[i] != 0)
            numbers[i] = std::numeric_limits<double>::quiet_NaN();
    }
}

void ColumnReader::GetRepeats(std::size_t count, std::vector<std::uint8_t> &values)
{
    values.clear();
    values.reserve(count);
    while (values.size() < count) {
        const std::uint8_t value = getByte();
        const std::uint64_t length = GetVarint();
        if (length == 0 || length > count - values.size()) {
            m_isSound = false;
            values.resize(count);
            return;
        }
        values.insert(values.end(), length, value);
    }
}

} // namespace Nodes
