#include "utils/relay/RelayTarget.h"

#include "utils/relay/RelayDispatcher.h"

namespace Utils {

RelayTarget::RelayTarget() = default;
RelayTarget::~RelayTarget() = default;

void RelayTarget::request()
{
    if (!m_isRequested.exchange(true, std::memory_order_acq_rel))
        RelayDispatcher::instance().post(shared_from_this());
}

void RelayTarget::answer()
{
    // An exchange, not a store: what publishers wrote before their request must be visible now.
    m_isRequested.exchange(false, std::memory_order_acq_rel);
    deliver();
}

} // namespace Utils
