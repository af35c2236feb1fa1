#include "apps/plant/LineFault.h"

#include <array>
#include <utility>

namespace Plant {

std::vector<std::uint8_t> LineFault::harmed(std::vector<std::uint8_t> answer,
                                            std::mt19937 &random) const
{
    if (kind == LineFaultKind::Silent)
        answer.clear();
    if (kind == LineFaultKind::Truncate)
        answer.resize(answer.size() / 2);
    if (kind == LineFaultKind::Garbage) {
        for (std::uint8_t &byte : answer)
            byte = static_cast<std::uint8_t>(random());
    }
    return answer;
}

std::optional<LineFaultKind> lineFaultByName(const std::string &name)
{
    static const std::array<std::pair<const char *, LineFaultKind>, 5> names{{
        {"none", LineFaultKind::None},
        {"late", LineFaultKind::Late},
        {"garbage", LineFaultKind::Garbage},
        {"truncate", LineFaultKind::Truncate},
        {"silent", LineFaultKind::Silent},
    }};
    for (const auto &entry : names) {
        if (name == entry.first)
            return entry.second;
    }
    return std::nullopt;
}

} // namespace Plant
