#pragma once

#include "utils/UtilsExport.h"

#include <memory>

namespace Utils {

/// One drag of the mouse or one spin of a number: the steps pushed on the way to its end become one
/// entry of the undo stack, and never one with those of another. A value; copies speak of the same
/// one. GUI thread.
class UTILS_EXPORT Interaction
{
public:
    /// None: what carries it is never merged.
    Interaction() = default;
    /// A new one.
    static Interaction begin();

    bool isNone() const { return !m_state; }
    /// Its steps are not to stay: see NodeCommand::cancel.
    bool isCancelled() const { return m_state && m_state->isCancelled; }
    void setCancelled() const
    {
        if (m_state)
            m_state->isCancelled = true;
    }

    bool operator==(const Interaction &other) const { return m_state == other.m_state; }
    bool operator!=(const Interaction &other) const { return !(*this == other); }

private:
    struct State
    {
        bool isCancelled = false;
    };

    std::shared_ptr<State> m_state;
};

} // namespace Utils
