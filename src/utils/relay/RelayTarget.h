#pragma once

#include "utils/UtilsExport.h"

#include <atomic>
#include <memory>

namespace Utils {

/// Something that waits to be called on the GUI thread. Shared by the receiver and by whatever may
/// still be publishing to it.
class UTILS_EXPORT RelayTarget : public std::enable_shared_from_this<RelayTarget>
{
public:
    RelayTarget();
    virtual ~RelayTarget();
    RelayTarget(const RelayTarget &) = delete;
    RelayTarget &operator=(const RelayTarget &) = delete;

    /// Asks for one call of deliver(); asking again before that call adds none. Any thread.
    void request();
    /// Takes the request back into "none" and delivers. GUI thread, called by the dispatcher.
    void answer();

protected:
    /// GUI thread. Whatever is requested from here on is delivered by a later call.
    virtual void deliver() = 0;

private:
    std::atomic<bool> m_isRequested{false};
};

} // namespace Utils
