#include "nodes/archive/store/codec/Decimals.h"

#include <cmath>

namespace Nodes::Decimals {

namespace {

constexpr double exact = 9007199254740992.0; // 2^53

bool isExact(double number, double power)
{
    const double scaled = std::nearbyint(number * power);
    return std::fabs(scaled) < exact && scaled / power == number;
}

} // namespace

std::optional<unsigned> Scale(const std::vector<double> &numbers, std::vector<std::int64_t> &scaled)
{
    unsigned places = 0;
    for (const double number : numbers) {
        // What is exact with fewer places stays so with more, as long as integers are.
        while (!isExact(number, Powers[places])) {
            if (++places > MostPlaces)
                return std::nullopt;
        }
    }
    const double power = Powers[places];
    scaled.resize(numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const double integer = std::nearbyint(numbers[i] * power);
        if (std::fabs(integer) >= exact)
            return std::nullopt;
        scaled[i] = static_cast<std::int64_t>(integer);
    }
    return places;
}

} // namespace Nodes::Decimals
