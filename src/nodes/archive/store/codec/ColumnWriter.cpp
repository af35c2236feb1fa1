#include "nodes/archive/store/codec/ColumnWriter.h"

#include "nodes/archive/store/codec/Decimals.h"

#include <cmath>
#include <cstring>

namespace Nodes {

namespace {

constexpr char asBits = '\xff'; // in place of a number of decimal places

std::uint64_t zigzag(std::int64_t number)
{
    return (static_cast<std::uint64_t>(number) << 1) ^ static_cast<std::uint64_t>(number >> 63);
}

/// Wraps around where the difference is none of 64 bits, and back when it is added again.
std::int64_t difference(std::int64_t a, std::int64_t b)
{
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(a) - static_cast<std::uint64_t>(b));
}

} // namespace

void ColumnWriter::PutVarint(std::uint64_t number)
{
    while (number >= 0x80) {
        m_bytes.push_back(static_cast<char>(number | 0x80));
        number >>= 7;
    }
    m_bytes.push_back(static_cast<char>(number));
}

void ColumnWriter::PutSigned(std::int64_t number)
{
    PutVarint(zigzag(number));
}

void ColumnWriter::PutBytes(std::string_view bytes)
{
    PutVarint(bytes.size());
    m_bytes.append(bytes);
}

/// The lowest byte of each word, then the next of each, as many as the largest word has.
void ColumnWriter::putPlanes(const std::vector<std::uint64_t> &words)
{
    std::uint64_t all = 0;
    for (const std::uint64_t word : words)
        all |= word;
    unsigned width = 0;
    while (width < 8 && all >> (8 * width) != 0)
        ++width;
    m_bytes.push_back(static_cast<char>(width));
    const std::size_t begin = m_bytes.size();
    m_bytes.resize(begin + width * words.size());
    char *out = m_bytes.data() + begin;
    for (unsigned plane = 0; plane < width; ++plane) {
        for (const std::uint64_t word : words)
            *out++ = static_cast<char>(word >> (8 * plane));
    }
}

void ColumnWriter::PutIntegers(const std::vector<std::int64_t> &numbers, unsigned order,
                               std::int64_t base)
{
    std::vector<std::uint64_t> words;
    words.reserve(numbers.size());
    std::int64_t previous = base;
    std::int64_t step = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        std::int64_t residual = order > 0 ? difference(numbers[i], previous) : numbers[i];
        previous = numbers[i];
        if (order > 1 && i > 0) {
            const std::int64_t newStep = residual;
            residual = difference(newStep, step);
            step = newStep;
        }
        if (i < order)
            PutSigned(residual);
        else
            words.push_back(zigzag(residual));
    }
    putPlanes(words);
}

void ColumnWriter::putGaps(const std::vector<double> &numbers)
{
    std::vector<std::uint8_t> gaps(numbers.size());
    bool hasGaps = false;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        gaps[i] = std::isnan(numbers[i]);
        hasGaps = hasGaps || gaps[i];
    }
    m_bytes.push_back(static_cast<char>(hasGaps));
    if (hasGaps)
        PutRepeats(gaps);
}

void ColumnWriter::PutNumbers(const std::vector<double> &numbers)
{
    putGaps(numbers);
    std::vector<double> filled = numbers;
    bool isFinite = true;
    double previous = 0;
    for (double &number : filled) {
        if (std::isnan(number))
            number = previous;
        previous = number;
        isFinite = isFinite && std::isfinite(number);
    }
    std::vector<std::int64_t> scaled;
    if (const auto places = isFinite ? Decimals::Scale(filled, scaled) : std::nullopt) {
        m_bytes.push_back(static_cast<char>(*places));
        PutIntegers(scaled, 1);
        return;
    }
    m_bytes.push_back(asBits);
    std::vector<std::uint64_t> words(filled.size());
    std::uint64_t before = 0;
    for (std::size_t i = 0; i < filled.size(); ++i) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &filled[i], sizeof bits);
        words[i] = bits ^ before;
        before = bits;
    }
    putPlanes(words);
}

void ColumnWriter::PutRepeats(const std::vector<std::uint8_t> &values)
{
    for (std::size_t i = 0; i < values.size();) {
        std::size_t end = i + 1;
        while (end < values.size() && values[end] == values[i])
            ++end;
        m_bytes.push_back(static_cast<char>(values[i]));
        PutVarint(end - i);
        i = end;
    }
}

} // namespace Nodes
