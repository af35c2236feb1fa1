#include "widgets/eventlist/NaturalKey.h"

#include "widgets/eventlist/EventTextKey.h"

#include <algorithm>

namespace Widgets::NaturalKey {

namespace {

constexpr std::size_t headSize = 8;
constexpr std::size_t mostDigits = 9; // that one byte tells of

unsigned char zero()
{
    static const auto key = static_cast<unsigned char>(EventTextKey("0").front());
    return key;
}

// Digits have keys one behind the other.
bool isDigit(char byte, unsigned char zero)
{
    return static_cast<unsigned char>(static_cast<unsigned char>(byte) - zero) < 10;
}

struct Number
{
    std::size_t begin = 0; // behind the zeros that do not count
    std::size_t end = 0;
    std::size_t length() const { return end - begin; }
};

Number numberAt(std::string_view key, std::size_t place, unsigned char zero)
{
    Number number{place, place};
    while (number.end < key.size() && isDigit(key[number.end], zero))
        ++number.end;
    while (number.begin + 1 < number.end && static_cast<unsigned char>(key[number.begin]) == zero)
        ++number.begin;
    return number;
}

/// Fills a head.
class HeadBytes
{
public:
    std::size_t room() const { return headSize - m_size; }
    void add(unsigned char byte)
    {
        m_bytes |= std::uint64_t(byte) << (8 * (headSize - 1 - m_size));
        ++m_size;
    }
    std::uint64_t bytes() const { return m_bytes; }

private:
    std::uint64_t m_bytes = 0;
    std::size_t m_size = 0;
};

} // namespace

// The number of digits stands in front of them, written as digits: 9 stands for nine and more, the
// rest following. So a longer number is greater, and among other characters numbers stay where
// digits stand.
Head headOf(std::string_view key, bool isInNumber)
{
    const unsigned char none = zero();
    HeadBytes bytes;
    std::size_t at = 0;
    bool isIn = isInNumber;
    while (at < key.size() && bytes.room() > 0) {
        if (!isDigit(key[at], none)) {
            isIn = false;
        } else if (!isIn) {
            const Number number = numberAt(key, at, none);
            std::size_t length = number.length() - 1;
            if (length / mostDigits + 1 > bytes.room()) {
                // Compared with the next bytes, unless no head holds it.
                while (bytes.room() > 0)
                    bytes.add(none + mostDigits);
                return {bytes.bytes(), std::uint32_t(at), false};
            }
            for (; length >= mostDigits; length -= mostDigits)
                bytes.add(none + mostDigits);
            bytes.add(static_cast<unsigned char>(none + length));
            at = number.begin;
            isIn = true;
            continue;
        }
        bytes.add(static_cast<unsigned char>(key[at++]));
    }
    return {bytes.bytes(), std::uint32_t(at), isIn && at < key.size() && isDigit(key[at], none)};
}

std::size_t beforeNumber(std::string_view key, std::size_t shared)
{
    const unsigned char none = zero();
    while (shared > 0 && isDigit(key[shared - 1], none))
        --shared;
    return shared;
}

int compareValues(std::string_view left, std::string_view right)
{
    const unsigned char none = zero();
    std::size_t one = 0;
    std::size_t other = 0;
    for (;;) {
        const auto begin = left.begin() + std::ptrdiff_t(one);
        const std::size_t most = std::min(left.size() - one, right.size() - other);
        const std::size_t shared = std::size_t(std::mismatch(begin, begin + std::ptrdiff_t(most),
                                                             right.begin() + std::ptrdiff_t(other))
                                                   .first -
                                               begin);
        const std::size_t same = beforeNumber(left.substr(one), shared);
        one += same;
        other += same;
        const Number of = numberAt(left, one, none);
        const Number to = numberAt(right, other, none);
        if (of.end == one || to.end == other) // not a number on both sides
            break;
        if (of.length() != to.length())
            return of.length() < to.length() ? -1 : 1;
        const int digits =
            left.substr(of.begin, of.length()).compare(right.substr(to.begin, to.length()));
        if (digits != 0)
            return digits;
        one = of.end;
        other = to.end;
    }
    return left.substr(one).compare(right.substr(other));
}

int compare(std::string_view left, std::string_view right)
{
    const int values = compareValues(left, right);
    return values != 0 ? values : left.compare(right);
}

} // namespace Widgets::NaturalKey
