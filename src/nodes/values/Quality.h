#pragma once

#include <string_view>

namespace Nodes {

/// Trustworthiness of a live value. Only Good may be drawn without a mark.
enum class Quality : unsigned char {
    Good = 0,      ///< measured now, device answering
    Uncertain = 1, ///< usable with care: substituted, at sensor limit, not yet confirmed
    Bad = 2,       ///< device lost, wrong type, never received
    Stale = 3      ///< was good, but no update came within the signal's maximum age
};

/// Short Russian name for tooltips and tables; static storage.
constexpr const char *QualityName(Quality quality)
{
    switch (quality) {
    case Quality::Good:
        return "Достоверно";
    case Quality::Uncertain:
        return "Сомнительно";
    case Quality::Stale:
        return "Устарело";
    case Quality::Bad:
        break;
    }
    return "Недостоверно";
}

/// English token for logs and files; static storage.
constexpr const char *QualityToken(Quality quality)
{
    switch (quality) {
    case Quality::Good:
        return "good";
    case Quality::Uncertain:
        return "uncertain";
    case Quality::Stale:
        return "stale";
    case Quality::Bad:
        break;
    }
    return "bad";
}

} // namespace Nodes
